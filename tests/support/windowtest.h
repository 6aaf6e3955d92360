#pragma once

#include "devicehost.h"
#include "guardedtest.h"
#include "hostgui.h"
#include "hostwindow.h"
#include "modalanswer.h"
#include "pluginfile.h"
#include "rundirectory.h"

#include <QComboBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>

/** Base of the tests of the host's window: starts and ends one on the devices of m_options. */
class WindowTest : public GuardedTest
{
    Q_OBJECT

protected slots:
    void initTestCase()
    {
        const LoadedPlugin plugin = loadPlugin(qEnvironmentVariable("PLUGIN"));
        QVERIFY2(plugin.factory, qPrintable(plugin.error));
        m_factory = plugin.factory;
    }

    void init()
    {
        GuardedTest::init();
        qputenv("XDG_STATE_HOME", QFile::encodeName(path("state")));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path("config"));
        m_options = {};
        m_options.interval = 3600; // of reports on standard output
        m_options.retries = 2;
    }

    void cleanup()
    {
        end();
        GuardedTest::cleanup();
    }

protected:
    static DeviceSpec serial(const QString &name, const QString &port)
    {
        DeviceSpec spec;
        spec.name = name;
        spec.port = port;
        return spec;
    }

    void start()
    {
        m_host = std::make_unique<DeviceHost>(m_options, *m_factory);
        QCOMPARE(m_host->open().text, QString());
        m_window = std::make_unique<HostWindow>(m_options, *m_host);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_host->start();
    }

    void end()
    {
        m_window.reset();
        m_host.reset();
    }

    CollectView *viewOf(const QString &device) { return m_host->device(device)->view(); }

    /** Acts on the next dialog. */
    template <typename Action> void fillForm(Action action)
    {
        m_answer = std::make_unique<ModalAnswer>([action](QDialog &dialog) {
            dialog.activateWindow(); // nobody does without a window manager
            const bool isActive =
                QTest::qWaitFor([&dialog] { return QApplication::activeWindow() == &dialog; });
            QVERIFY(isActive);
            const QPointer<QDialog> guard(&dialog);
            action(dialog);
            if (guard && guard->isVisible()) // or the test that failed would wait for ever
                dialog.close();
        });
    }

    void chooseLevel(int level)
    {
        auto *box = m_window->findChild<QComboBox *>("userLevel");
        box->setCurrentIndex(level);
        emit box->activated(level);
    }

    void raiseLevel(QMessageBox::StandardButton answer)
    {
        fillForm(
            [answer](QDialog &box) { static_cast<QMessageBox &>(box).button(answer)->click(); });
        chooseLevel(1);
        QVERIFY(m_answer->hasAnswered());
    }

    CollectThread *m_factory = nullptr;
    HostOptions m_options;
    std::unique_ptr<DeviceHost> m_host;
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<ModalAnswer> m_answer;
};

/** Runs a test in a directory of its own, as the configuration files lie beside the executable. */
template <class Test> int runApart(int argc, char **argv)
{
    if (!RunDirectory::isActive())
        qFatal("%s", qPrintable(RunDirectory::enter(argv, {}).error));
    int code = 0;
    {
        QApplication application(argc, argv);
        HostGui::setLooks();
        Test test;
        code = QTest::qExec(&test, argc, argv);
    }
    RunDirectory::remove();
    return code;
}
