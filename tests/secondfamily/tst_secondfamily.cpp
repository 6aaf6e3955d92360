#include "collectview.h"
#include "fakemanager.h"
#include "modalanswer.h"
#include "pluginharness.h"
#include "privatebus.h"
#include "ptypair.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTabWidget>

#include <algorithm>
#include <memory>

/** One event that a client posted. */
struct Post
{
    int type;
    QVariantMap map;
};

/** The second family's plug-in, loaded beside the first one's: everything is its own family's. */
class tst_SecondFamily : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_other.reset(clientOf(FIRST_PLUGIN_FILE)); // a host has more than one
        m_client.reset(clientOf(PLUGIN_FILE));
        connect(m_client.get(), &CollectThread::postDEvent, this,
                [this](int type, const QVariantMap &map) {
                    m_posts.append({ type, map });
                });
        driver().onQuery([this](PortDescriptor &, int, const FakeDriver::Callback &deliver) {
            for (auto value = m_values.begin(); value != m_values.end(); ++value)
                deliver(value.key(), value.value());
            return 1;
        });
        driver().onControl([this](PortDescriptor &, const char *command) {
            m_commands.append(command);
            return writeFile("history.txt", "26 7 1 3 3725 0 1\n") ? 1 : 0;
        });
        configure(*m_client, "small", "portName=" + m_line.name().toLocal8Bit() + "\n");
    }

    void init()
    {
        GuardedTest::init();
        m_values.clear();
        m_posts.clear();
        m_commands.clear();
    }

    void cleanupTestCase()
    {
        m_client.reset();
        m_other.reset();
    }

    void texts()
    {
        QCOMPARE(m_client->getEventLogDesc(),
                 QStringList({ "Mains failed", "Pack is low", "Too much load", "",
                               "Fan stands still", "Mains are back", "Pack is charged",
                               "Load is fine", "Spare ended", "Fan turns" }));
        QCOMPARE(m_client->getDataLogDesc(), QStringList({ "Mode", "Mains(V)", "Outlet load(%)" }));
        QCOMPARE(m_client->changeLogData({ { 5100, 1.0f }, { 5101, 230.04f }, { 5104, 12.0f } }),
                 QStringList({ "On battery", "230.0", "12.0" }));
        QCOMPARE(m_other->getEventLogDesc().size(), 192);
        QCOMPARE(m_other->getDataLogDesc().size(), 15);
    }

    // Its driver was loaded under its name, or there would be no answer.
    void report()
    {
        m_values = {
            { 2000, 1.0f }, { 2001, 1.0f }, { 2004, 1.0f }, { 2005, 1.0f }, { 5104, 37.0f }
        };
        for (int i = 0; i < 8; ++i)
            m_values.insert(5000 + i, float("KX100 2K"[i]));
        QCOMPARE(cycle(),
                 QStringList({ "1040", "2001", "2006:0", "2006:1", "2006:4", "2010", "2009", "2001",
                               "2007" }));
        QCOMPARE(m_client->deviceInformation.value("upsIdentModel").toByteArray(),
                 QByteArray("KX100 2K"));
        QCOMPARE(m_client->deviceInformation.value("upsLoad").toInt(), 37);
        m_values = { { 2000, 0.0f }, { 2001, 0.0f } };
        QCOMPARE(cycle(), QStringList({ "2006:5", "2006:6", "2010", "2009", "2007" }));
        QVERIFY(cycle() == QStringList { "2007" });
    }

    void buttonToDriver()
    {
        view()->setUserInfo("operator", 1);
        QStringList buttons;
        for (const QPushButton *button : view()->findChildren<QPushButton *>())
            buttons.append(button->objectName());
        for (const char *name : { "pack_test", "unit_off", "fetch_log", "new_firmware" })
            QCOMPARE(buttons.count(name), 1);
        QVERIFY(!buttons.contains("battery_test"));

        const ModalAnswer confirm([](QDialog &box) { box.accept(); });
        view()->findChild<QPushButton *>("unit_off")->click();
        QVERIFY(confirm.hasAnswered());
        QCOMPARE(m_posts.size(), 1);
        // What the host does with it.
        const QVariantMap request = m_posts.takeFirst().map;
        m_client->control(request.value("controlId").toInt(),
                          request.value("controlValue").toString());
        cycle();
        QCOMPARE(m_commands, QByteArrayList { "6," });
    }

    void history()
    {
        m_client->control(1045, "out.csv");
        QVERIFY(cycle().contains("1042"));
        QCOMPARE(m_commands, QByteArrayList { "9,out.csv" });
        const QList<QByteArray> lines = fileContents("out.csv").split('\n');
        QVERIFY2(lines.at(1).startsWith("1a,no mains,began,")
                     && lines.at(1).endsWith(",on battery,"),
                 lines.at(1));
        QVERIFY(std::any_of(m_posts.begin(), m_posts.end(), [](const Post &post) {
            return post.map.value("desc") == "small Log fetch successful";
        }));
    }

    void shown()
    {
        const DataReport report { { 2004, 1.0f },  { 5100, 1.0f }, { 5101, 229.0f },
                                  { 5104, 37.0f }, { 5110, 1.0f }, { 5200, 230.0f },
                                  { 5201, 1.0f },  { 5202, 2.9f } };
        for (int tab = 0; tab < 5; ++tab) {
            view()->findChild<QTabWidget *>()->setCurrentIndex(tab);
            view()->flushData(report);
            view()->grab(); // its diagram has no battery, and two flows
        }
        QCOMPARE(labels("PanelTitle"), QString("DEVICE OUTPUT INPUT BATTERY"));
        QCOMPARE(
            labels("PanalBodyKeyName"),
            QString("Model: Mode: Outlet voltage: Outlet load: Mains voltage: Mains frequency: "
                    "Pack voltage: Pack charge:"));
        QCOMPARE(labels("PanalBodyKeyValue"), QString("- Battery - 37% 229.0V - - -"));
        QCOMPARE(cells("RecordTable", 1), QString("Fan stands still"));
        QCOMPARE(cells("basicTable", 1), QString("230V 0h"));
        QCOMPARE(cells("basicTable", 2), QString("220-240 0-12"));
        QCOMPARE(cells("batteryTable", 1), QString("Lithium 2.90V"));
        QCOMPARE(cells("batteryTable", 2), QString("- 2.8-3"));
        QVERIFY(!view()->findChild<QTableWidget *>("adjustTable"));
    }

    void upgrade()
    {
        PrivateBus bus;
        QVERIFY(bus.start());
        const FakeManager manager(bus.address());
        const QString program =
            QCoreApplication::applicationDirPath() + "/upgrade/KX100P1_3KG1Software.exe";
        QVERIFY(QDir().mkpath(QFileInfo(program).path()));
        QVERIFY(writeFile(program, "#!/bin/sh\necho \"$1\" > upgraded\n"));
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("KX300_SERVICE_SCOPE", "user");
        view()->setUserInfo("operator", 1);
        view()->show();
        const ModalAnswer confirm([](QDialog &box) { box.accept(); });
        view()->findChild<QPushButton *>("new_firmware")->click();
        const QWidget *pages = view()->findChild<QTabWidget *>()->currentWidget()->parentWidget();
        QTRY_VERIFY_WITH_TIMEOUT(pages->isEnabled(), 20000);
        QCOMPARE(fileContents("upgraded"), m_line.name().toLocal8Bit() + "\n");
        QVERIFY(QFile::remove(program));
    }

private:
    using DataReport = QMap<int, QVariant>;

    FakeDriver &driver() { return fakeDriverIn("libkx100_g1_1-3k"); }

    CollectView *view() { return m_client->getView(); }

    // The events of one cycle, those of flags with their number among the texts.
    QStringList cycle()
    {
        m_posts.clear();
        m_client->nextPollTime = 0;
        m_client->poll();
        QStringList types;
        for (const Post &post : qAsConst(m_posts)) {
            const QString number = QString::number(post.type);
            types.append(post.type == 2006 ? number + ':' + post.map.value("alarmId").toString()
                                           : number);
        }
        return types;
    }

    QString labels(const char *name)
    {
        QStringList texts;
        for (const QLabel *label : view()->findChildren<QLabel *>(name))
            texts.append(label->text());
        return texts.join(' ');
    }

    QString cells(const char *name, int column)
    {
        const auto *table = view()->findChild<QTableWidget *>(name);
        QStringList texts;
        for (int row = 0; table && row < table->rowCount(); ++row)
            texts.append(table->item(row, column)->text());
        return texts.join(' ');
    }

    PtyPair m_line;
    std::unique_ptr<CollectThread> m_other;
    std::unique_ptr<CollectThread> m_client;
    QMap<int, float> m_values; // that the driver delivers
    QByteArrayList m_commands; // that it was given
    QList<Post> m_posts;
};

QTEST_MAIN(tst_SecondFamily)
#include "tst_secondfamily.moc"
