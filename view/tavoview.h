#pragma once

#include "collectview.h"
#include "devicerecord.h"
#include "family.h"
#include "tavo_6_20k_view.h"

#include <memory>

class ControlActions;
class DevicePages;
class QLabel;
class QTabWidget;
class QTableWidget;
class RequestStatus;
class StateBanner;
class UpgradeDevice;
class ValuePanel;

/**
 * The device's widget in the host application.
 *
 * It shows the reports it is given and posts what the user asks for. Only the current tab is
 * refreshed with a report; the others catch up when they become current.
 *
 * Threads:   GUI thread only.
 * Ownership: owns the parameter descriptions, the widgets and the setting dialog.
 */
class tavoView : public CollectView
{
    Q_OBJECT

public:
    /** The tabs, in the order of DevicePages. */
    enum Tab { OverviewTab, AlarmTab, RealDataTab, ControlTab, MaintenanceTab };

    explicit tavoView(QWidget *parent = nullptr);
    ~tavoView() override;

    /** Builds the widgets on the first call; each call clears the diagram's flows. */
    void refreshLayout() override;

    /** Writes the latest report into the current tab; nothing before the first report. */
    void refreshData() override;

    void flushData(QMap<int, QVariant> report) override;

    /** "state" 1, the link is lost: what is shown are the last values, and looks so. */
    void flushUpsInfo(QString key, QVariant value) override;

    /** Level 0 may neither control nor maintain the device, nor change a setting. */
    void setUserInfo(QString user, int level) override;

    /** Writes the latest report into one tab; only what differs is written. */
    void UpdatePointTabInfo(int tab);

    /** The display text of a parameter in the latest report. */
    QString getPvalue(const ParameterInformation *record) const;

    /** Builds the settings table `objectName` into `table`. */
    void initialConfigTable(QString objectName, QList<ParameterInformation *> list,
                            QTableWidget *&table);

    /** Builds a panel of names and values; its value labels are added to `labels`. */
    ValuePanel *ShowPanalView(QWidget *parent, QString title, QList<ParameterInformation *> list,
                              QList<QLabel *> &labels);

    /** Shows what the client tells, too. `news` must outlive the view. */
    void follow(ClientNews &news);

    /** Sets the device to be upgraded, which must outlive the view; without one an upgrade ends
     *  with its command. */
    void setUpgradeDevice(UpgradeDevice *device);

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

public slots:
    /** Opens the dialog for the setting at `row` of the table that sent the signal. */
    void slot_doubleClicked(int row, int column);

    /** Asks, then posts the command of the button that sent the signal. */
    void pushButtonSlot();

private:
    void createPages();
    void connectRequests();
    void showAccess();
    void showState();
    void showAlarms();

    const Family &m_family = deviceFamily();
    ControlActions *m_actions; // a child
    RequestStatus *m_requests; // a child
    tavo_6_20k_View m_viewData;
    DeviceRecord m_record { m_family };
    QTabWidget *m_tabs = nullptr;
    std::unique_ptr<DevicePages> m_pages; // null until the layout is built
    StateBanner *m_banner = nullptr;
};
