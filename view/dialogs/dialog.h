#pragma once

#include "parameterinformation.h"

#include <QDialog>
#include <QTimer>
#include <QVariant>

class Loading;
class NoteText;
class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

/**
 * The frameless window in which the user changes one setting.
 *
 * One object serves all settings: initial() loads a record, "Ok" checks the value, posts the
 * request, and the window closes itself after a moment.
 *
 * Threads:   GUI thread only.
 * Ownership: the record stays the caller's and must outlive the editing.
 */
class Dialog : public QDialog
{
    Q_OBJECT

public:
    enum Page : int { ValuePage, OptionPage, BusyPage };

    explicit Dialog(QWidget *parent = nullptr);

    /** Loads a record; an editing that is under way ends. */
    void initial(ParameterInformation *record);

    /** Selects the option with this value, if there is one. */
    void selectOption(int value);

    /** Shows the value that the device has; with its unit. */
    void setCurrent(const QString &value);

    /** Disables "Ok" and says why; an empty reason enables it. */
    void setObstacle(const QString &reason);

    /** Sets the device name that is shown and sent with each request. */
    void setDevName(QString name);

    /** Shows page 0 (value), 1 (option) or 2 (busy). */
    void switchPage(int page);

    /** The text that was typed, or that of the chosen option. */
    QString getstrValue();

    /** The value in raw units, rounded; 0 when it cannot be sent. */
    int getrealValue();

    void done(int result) override;

public slots:
    /** Checks the value and posts the request, or says why not. */
    void checkRange();

signals:
    /** The request for the host: type 1029, with "controlId", "controlValue", "nodeValue",
     *  "nodeName" and "name". */
    void postDEvent(int type, QMap<QString, QVariant> map);

private:
    QWidget *createValuePage();
    QWidget *createOptionPage();
    QWidget *createBusyPage();
    void buildLayout();
    void addSpinner();
    void dropSpinner();
    void addNotes(QBoxLayout &column);
    void showRemark();
    void takeRange();
    bool isAcceptable();
    void refuse();
    void post();

    QStackedWidget *m_pages;
    QLineEdit *m_valueEdit = nullptr;
    QLabel *m_rangeLabel;
    QLabel *m_nameLabel;
    QComboBox *m_optionBox = nullptr;
    QBoxLayout *m_busyRow = nullptr;
    Loading *m_spinner = nullptr; // on the busy page only: it turns as long as it lives
    NoteText *m_deviceNote = nullptr;
    NoteText *m_currentNote = nullptr;
    NoteText *m_unitNote = nullptr;
    NoteText *m_remark = nullptr;
    QPushButton *m_okButton;
    QPushButton *m_cancelButton;
    QTimer m_closeTimer { this };
    ParameterInformation *m_record = nullptr;
    QString m_recordName;
    int m_mode = ValuePage; // 0 free value, 1 option
    int m_max = 0;
    int m_min = 0;
    float m_scale = 0;
    float m_realValue = 0; // last converted value, not rounded
    QString m_stringValue;
    QString m_deviceName;
    QString m_obstacle;
};
