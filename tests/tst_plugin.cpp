#include "collectthread.h"
#include "collectview.h"

#include <QPluginLoader>
#include <QtTest>

/** The plug-in as a file: metadata, instance and the symbols that host and driver bind to. */
class tst_Plugin : public QObject
{
    Q_OBJECT

private slots:
    void metadata()
    {
        const QPluginLoader loader(PLUGIN_FILE);
        const QJsonObject metaData = loader.metaData();
        QCOMPARE(metaData.value("IID").toString(), "com.orva.Qt.ProInterface");
        QCOMPARE(metaData.value("className").toString(), "tavoClient");
        QCOMPARE(metaData.value("MetaData").toObject(), QJsonObject());
#ifdef QT_NO_DEBUG
        QCOMPARE(metaData.value("debug").toBool(true), false);
#endif
    }

    void oneInstance()
    {
        QPluginLoader loader(PLUGIN_FILE);
        QObject *first = loader.instance();
        QVERIFY2(first, qPrintable(loader.errorString()));
        QCOMPARE(first->metaObject()->className(), "tavoClient");
        QCOMPARE(QPluginLoader(PLUGIN_FILE).instance(), first);
    }

    void exportedSymbols()
    {
        // Other than hidapi's, of which a host may call any.
        QStringList expected { "qt_plugin_query_metadata",
                               "qt_plugin_instance",
                               "CommOpen",
                               "CommAccept",
                               "CommRead",
                               "CommWrite",
                               "CommControl",
                               "CommClose",
                               "TcpCommRead",
                               "TcpCommWrite",
                               "setModbusCRC",
                               "checkModbufCRC",
                               "mod_Set_SetBuf",
                               "buildCmd",
                               "buildCmd16",
                               "UINT8_2_to_UINT16",
                               "UINT8_4_to_UINT32",
                               "FiltSpace",
                               "tavoDataProce" };
        expected.sort();

        QProcess nm;
        nm.start("nm", { "-D", "--defined-only", PLUGIN_FILE });
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
        for (const char *name : { "hid_init", "hid_open", "hid_close", "hid_read_timeout",
                                  "hid_write", "hid_set_nonblocking", "hid_enumerate" })
            QVERIFY2(hid.contains(QLatin1String(name)), name);
    }

    void methodOrder()
    {
        const QPair<const QMetaObject *, QStringList> rows[] = {
            { &CollectThread::staticMetaObject,
              { "postDEvent(int,QMap<QString,QVariant>)", "control(int,QString)",
                "getDataLogDesc()", "changeLogData(QMap<int,QVariant>)", "getEventLogDesc()",
                "getView()", "loadConfig()", "create(void*)", "release(CollectThread*)",
                "setPortHandle(void*)", "flushUpsInfoSLot(QString,QVariant)", "poll()",
                "getWorkState()" } },
            { &CollectView::staticMetaObject,
              { "postDEvent(int,QMap<QString,QVariant>)", "setName(QString)", "setLanguage(int)",
                "refreshData()", "refreshLayout()", "flushData(QMap<int,QVariant>)",
                "flushUpsInfo(QString,QVariant)", "setUserInfo(QString,int)",
                "control(int,QString)" } }
        };
        for (const auto &[meta, expected] : rows) {
            QCOMPARE(meta->methodCount() - meta->methodOffset(), expected.size());
            for (int i = 0; i < expected.size(); ++i) {
                // Looked up as a string-based connect does it: the position is found by the text.
                const int index = meta->indexOfMethod(expected.at(i).toLatin1().constData());
                QVERIFY2(index == meta->methodOffset() + i, qPrintable(expected.at(i)));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_Plugin)
#include "tst_plugin.moc"
