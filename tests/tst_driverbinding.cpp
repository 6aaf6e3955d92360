#include "client/driverbinding.h"
#include "fakedriver.h"
#include "warningguard.h"

#include <QtTest>

/** Driver files of every kind behind the one name that the client loads. */
class tst_DriverBinding : public QObject
{
    Q_OBJECT

private slots:
    void load_data();
    void load();
};

void tst_DriverBinding::load_data()
{
    QTest::addColumn<QString>("variant");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<bool>("query");
    QTest::addColumn<bool>("control");
    QTest::addColumn<QString>("logged");
    QTest::newRow("complete") << "complete" << true << true << true << "";
    QTest::newRow("no Control") << "nocontrol" << true << true << false << "not had Control";
    QTest::newRow("no Query") << "noquery" << true << false << true << "not had Query";
    QTest::newRow("no file") << "none" << false << false << false << "Cannot load library";
    QTest::newRow("not a library") << "text" << false << false << false << "Cannot load library";
    QTest::newRow("complete again") << "complete" << true << true << true << "";
}

void tst_DriverBinding::load()
{
    QFETCH(QString, variant);
    QFETCH(bool, loaded);
    QFETCH(QString, logged);
    const QString name = QStringLiteral(DRIVERS "/changing/libkx300_g4_6-20k.so");
    QFile::remove(name);
    QFile::link(QStringLiteral(DRIVERS "/%1/libkx300_g4_6-20k.so").arg(variant), name);
    if (variant == "text") {
        QFile::remove(name);
        QFile text(name);
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no library\n") > 0);
    }
    const WarningGuard guard;
    DriverBinding driver;
    QCOMPARE(driver.load(), loaded);
    QCOMPARE(driver.load(), loaded); // a second time it is loaded already, or fails again
    const QString log = guard.messages().join(QLatin1Char('\n'));
    QVERIFY2(logged.isEmpty() ? log.isEmpty() : log.contains(logged), qPrintable(log));

    // A call that cannot be made fails; so does one without a device.
    int device = 0;
    char command[50] = "3,";
    QTEST(driver.query({ &device, nullptr, nullptr }, 1, nullptr, nullptr) == 1, "query");
    QTEST(driver.control({ &device, nullptr, nullptr }, 1, command, nullptr) == 1, "control");
    QCOMPARE(driver.query({ nullptr, nullptr, nullptr }, 1, nullptr, nullptr), 0);
    QCOMPARE(driver.control({ nullptr, nullptr, nullptr }, 1, command, nullptr), 0);
    driver.unload();
    QCOMPARE(driver.query({ &device, nullptr, nullptr }, 1, nullptr, nullptr), 0);
    QCOMPARE(guard.unexpected(), QStringList());
}

QTEST_GUILESS_MAIN(tst_DriverBinding)
#include "tst_driverbinding.moc"
