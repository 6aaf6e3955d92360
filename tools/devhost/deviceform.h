#pragma once

#include "connectiontest.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QStackedWidget;

/**
 * Asks where a device is: on a serial port or on the network.
 *
 * What is entered is taken by `take`, which answers why it cannot be; the dialog stays open then.
 *
 * Threads: GUI thread only.
 */
class DeviceForm : public QDialog
{
    Q_OBJECT

public:
    using Take = std::function<Outcome(const DeviceSpec &)>;

    DeviceForm(DeviceHost &host, const DeviceSpec &spec, Take take, QWidget *parent = nullptr);

    /** What is entered; not checked. */
    DeviceSpec spec() const;

    void accept() override;

private:
    QWidget *createKinds();
    QWidget *createSerialPage();
    QWidget *createNetworkPage();
    QWidget *createTestRow();
    void fill(const DeviceSpec &spec);
    void showKind();
    void test();
    void showResult(bool good, const QString &text);
    Outcome checkPlace() const;
    Outcome check() const;

    DeviceSpec m_before;
    Take m_take;
    ConnectionTest m_test;
    QLineEdit *m_name = nullptr;
    QRadioButton *m_serial = nullptr;
    QRadioButton *m_network = nullptr;
    QStackedWidget *m_kinds = nullptr;
    QComboBox *m_port = nullptr;
    QComboBox *m_rate = nullptr;
    QComboBox *m_parity = nullptr;
    QSpinBox *m_address = nullptr;
    QLineEdit *m_host = nullptr;
    QSpinBox *m_tcpPort = nullptr;
    QSpinBox *m_unit = nullptr;
    QPushButton *m_testButton = nullptr;
    QLabel *m_result = nullptr;
};
