#include "fakedriver.h"
#include "guardedtest.h"
#include "link/driverbinding.h"

/** Driver files of every kind behind the one name that the client loads. */
class tst_DriverBinding : public GuardedTest
{
    Q_OBJECT

private slots:
    void load()
    {
        const struct
        {
            const char *variant;
            bool loaded;
            bool query;
            bool control;
            const char *logged;
        } rows[] = { { "complete", true, true, true, "" },
                     { "nocontrol", true, true, false, "not had Control" },
                     { "noquery", true, false, true, "not had Query" },
                     { "none", false, false, false, "Cannot load library" },
                     { "text", false, false, false, "Cannot load library" }, // no library
                     { "complete", true, true, true, "" } };
        const QString name = QStringLiteral(DRIVERS "/changing/libkx300_g4_6-20k.so");
        char command[50] = "3,";
        int device = 0;
        const PortDescriptor port { &device, nullptr, nullptr };
        for (const auto &row : rows) {
            m_guard.emplace();
            m_guard->expect("driver libkx300_g4_6-20k cannot be loaded"); // once
            QFile::remove(name);
            if (row.variant == QByteArray("text"))
                QVERIFY(writeFile(name, "no library\n"));
            else
                QFile::link(QStringLiteral(DRIVERS "/%1/libkx300_g4_6-20k.so").arg(row.variant),
                            name);
            DriverBinding driver("libkx300_g4_6-20k");
            QCOMPARE(driver.load(), row.loaded);
            QCOMPARE(driver.load(), row.loaded); // loaded already, or fails again
            const QString log = m_guard->messages().join('\n');
            QVERIFY2(*row.logged ? log.contains(row.logged) : log.isEmpty(), qPrintable(log));
            // A call that cannot be made fails; so does one without a device.
            QCOMPARE(driver.query(port, 1, nullptr, nullptr), int(row.query));
            QCOMPARE(driver.control(port, 1, command, nullptr), int(row.control));
            QCOMPARE(driver.query({}, 1, nullptr, nullptr), 0);
            QCOMPARE(driver.control({}, 1, command, nullptr), 0);
            driver.unload();
            QCOMPARE(driver.query(port, 1, nullptr, nullptr), 0);
            QCOMPARE(m_guard->unexpected(), QStringList());
        }
    }

    void startThatThrows()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("Qt's QLibrary does not give back what it held when the start threw.");
#endif
        const int device = 0;
        const PortDescriptor port { const_cast<int *>(&device), nullptr, nullptr };
        DriverBinding driver(DRIVERS "/throwing/libkx300_g4_6-20k.so");
        QVERIFY(!driver.load());
        QVERIFY(m_guard->messages().contains("load lib fail"));
        QCOMPARE(driver.query(port, 1, nullptr, nullptr), 0);
    }
};

QTEST_GUILESS_MAIN(tst_DriverBinding)
#include "tst_driverbinding.moc"
