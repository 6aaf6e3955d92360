#pragma once

#include <QMap>
#include <QString>
#include <QVariant>
#include <QWidget>

/**
 * The host's view of one device: the widget that a plug-in supplies.
 *
 * Shared word for word by the host and its plug-ins, so that both agree on the object's layout.
 * The order of the virtual functions, of the meta-object's methods and of the members is contract.
 *
 * Threads:   GUI thread only.
 * Ownership: the client that made it owns it.
 */
class CollectView : public QWidget
{
    Q_OBJECT

public:
    explicit CollectView(QWidget *parent = nullptr)
        : QWidget(parent)
    {
    }

signals:
    /** A request of the view for the host; the client passes it on as its own. */
    void postDEvent(int type, QMap<QString, QVariant> map);

public slots:
    /** Sets the name of the device that is shown. */
    virtual void setName(QString n) { deviceName = n; }

    /** Sets the language number of the host. */
    virtual void setLanguage(int l) { language = l; }

    /** Writes the stored report into the widgets. */
    virtual void refreshData() { }

    /** Builds the widgets. */
    virtual void refreshLayout() { }

    /** Takes over a data report: data identifier -> value. */
    virtual void flushData(QMap<int, QVariant> d) { dataReport = d; }

    /** Sets one entry of the view's device information map. */
    virtual void flushUpsInfo(QString key, QVariant d) { deviceInformation.insert(key, d); }

    /** Sets the user and the user's rights; level 0 may only look. */
    virtual void setUserInfo(QString user, int level)
    {
        userName = user;
        userLevel = level;
    }

    /** Asks the host for a control command: posts it as an event of the command's number.
     *  @return 0; carries no information */
    int control(int id, QString value)
    {
        QMap<QString, QVariant> map;
        // The keys of HostContract, spelt out: a host compiles this header without any other.
        map.insert(QStringLiteral("name"), deviceName);
        map.insert(QStringLiteral("controlId"), id);
        map.insert(QStringLiteral("controlValue"), value);
        emit postDEvent(id, map);
        return 0;
    }

protected:
    QString deviceName;
    int language = 0;
    int userLevel = 0;
    QString userName;
    QMap<int, QVariant> dataReport;
    QMap<QString, QVariant> deviceInformation;
};
