#include "guardedtest.h"

#include "configfiles.h"
#include "inilines.h"

#include <sys/stat.h>

/** The configuration files that the host writes for the plug-in and shares with people. */
class tst_Hostfiles : public GuardedTest
{
    Q_OBJECT

private slots:
    void changedLine_data()
    {
        const Columns<QByteArray, QByteArray> row("before", "after");
        row("empty", "", "[dev]\nttyS0\\param=\"9600,n,8,1\"\n");
        row("comments and strangers stay", "# lines\nnonsense\n[x]\na = b\n",
            "# lines\nnonsense\n[x]\na = b\n[dev]\nttyS0\\param=\"9600,n,8,1\"\n");
        row("section is there", "[dev]\nttyS1\\timeout=5\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\nttyS1\\timeout=5\n");
        row("written by a program", "[dev]\nttyS0\\param=\"2400,e,7,2\"\n\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\n\n");
        row("written by hand", "/dev/ttyS0/param=2400,e,7,2\r\n[z]\n",
            "/dev/ttyS0/param=\"9600,n,8,1\"\r\n[z]\n");
        row("commented out", "[dev]\n;ttyS0\\param=1\n",
            "[dev]\nttyS0\\param=\"9600,n,8,1\"\n;ttyS0\\param=1\n");
        row("no end of the line", "[dev]\nttyS0\\param=1", "[dev]\nttyS0\\param=\"9600,n,8,1\"");
    }

    void changedLine()
    {
        QFETCH(QByteArray, before);
        QVERIFY(writeFile("serial.ini", before));
        const ParsedDevice device = parseDevice("name=a,port=/dev/ttyS0,settings=9600,N,8,1");
        QVERIFY2(device.device, qPrintable(device.error));
        const SerialSettings result = writeSerialSettings({ *device.device });
        QCOMPARE(result.outcome.error, QString());
        QTEST(fileContents("serial.ini"), "after");
        QCOMPARE(result.notes.size(), before.contains("2400") || before.endsWith("=1") ? 1 : 0);
        // As the plug-in reads it.
        const QSettings settings("serial.ini", QSettings::IniFormat);
        if (!before.startsWith('/'))
            QCOMPARE(settings.value("/dev/ttyS0/param").toString(), QString("9600,n,8,1"));
    }

    void keysOfAllLetters()
    {
        const QString port = QString::fromUtf8("/tmp/線 1%/a=b;[c]");
        IniLines lines("");
        lines.setValue(port + "/timeout", "7");
        QVERIFY(writeFile("x.ini", lines.bytes()));
        QCOMPARE(QSettings("x.ini", QSettings::IniFormat).value(port + "/timeout").toInt(), 7);
        QCOMPARE(lines.value(port + "/timeout").value_or(QString()), QString("7"));
    }

    void fifoInItsPlace()
    {
        QVERIFY(QDir().mkpath("KOVA/TesselView/db"));
        for (const char *name : { "serial.ini", "KOVA/TesselView/db/dev.ini" })
            QCOMPARE(::mkfifo(name, 0600), 0);
        QVERIFY(writeConfiguration(".", {}).error.contains("dev.ini: it is no file"));
        const ParsedDevice device = parseDevice("name=a,port=/dev/ttyS0,timeout=100");
        QVERIFY(
            writeSerialSettings({ *device.device }).outcome.error.contains("no file of settings"));
    }

    void textOfADevice_data()
    {
        const Columns<QString> row("text");
        for (const char *text :
             { "name=a,port=/dev/ttyS0,addr=1", "name=b c,tcp=[::1]:1502,addr=247",
               "name=d,port=p,addr=7,settings=9600,n,8,1,timeout=300" })
            row(text, text);
    }

    void textOfADevice()
    {
        QFETCH(QString, text);
        QCOMPARE(parseDevice(text).device.value_or(DeviceSpec()).text(), text);
    }
};

QTEST_GUILESS_MAIN(tst_Hostfiles)
#include "tst_hostfiles.moc"
