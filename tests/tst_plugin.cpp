#include <QCoreApplication>
#include <QFile>
#include <QPluginLoader>
#include <QProcess>
#include <QtTest>

/** The plug-in as a file: metadata, instance and the symbols that host and driver bind to. */
class tst_Plugin : public QObject
{
    Q_OBJECT

private slots:
    void metadata();
    void oneInstance();
    void exportedSymbols();
};

void tst_Plugin::metadata()
{
    const QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    const QJsonObject metaData = loader.metaData();
    QCOMPARE(metaData.value("IID").toString(), QStringLiteral("com.orva.Qt.ProInterface"));
    QCOMPARE(metaData.value("className").toString(), QStringLiteral("tavoClient"));
    QCOMPARE(metaData.value("MetaData").toObject(), QJsonObject());
#ifdef QT_NO_DEBUG
    QCOMPARE(metaData.value("debug").toBool(true), false);
#endif
}

void tst_Plugin::oneInstance()
{
    QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    QObject *first = loader.instance();
    QVERIFY2(first, qPrintable(loader.errorString()));
    QCOMPARE(first->metaObject()->className(), "tavoClient");
    QCOMPARE(QPluginLoader(QStringLiteral(PLUGIN_FILE)).instance(), first);
}

void tst_Plugin::exportedSymbols()
{
    // Only hidapi's names are a pattern in the list; every other name is one symbol.
    QFile list(QStringLiteral(EXPORT_LIST));
    QVERIFY(list.open(QIODevice::ReadOnly));
    QStringList expected;
    for (const QByteArray &line : list.readAll().split('\n')) {
        const QByteArray name = line.trimmed();
        if (name.endsWith(';') && !name.contains('*') && !name.startsWith('}'))
            expected << QString::fromLatin1(name.chopped(1));
    }
    expected.sort();

    QProcess nm;
    nm.start(
        QStringLiteral("nm"),
        { QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral(PLUGIN_FILE) });
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    QStringList plain;
    QStringList hid;
    for (const QByteArray &line : nm.readAllStandardOutput().split('\n')) {
        const QString name = QString::fromLatin1(line.mid(line.lastIndexOf(' ') + 1));
        if (name.startsWith(QLatin1String("hid_")))
            hid << name;
        else if (!name.isEmpty())
            plain << name;
    }
    plain.sort();
    QCOMPARE(plain, expected);
    for (const char *name : { "hid_init", "hid_open", "hid_close", "hid_read_timeout", "hid_write",
                              "hid_set_nonblocking", "hid_enumerate" })
        QVERIFY2(hid.contains(QLatin1String(name)), name);
}

QTEST_GUILESS_MAIN(tst_Plugin)
#include "tst_plugin.moc"
