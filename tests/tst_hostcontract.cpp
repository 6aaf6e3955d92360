#include "plugin/collectthread.h"
#include "plugin/collectview.h"

#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(const QMetaObject *)

/** The two base classes as the host binds to them: by string and by position. */
class tst_HostContract : public QObject
{
    Q_OBJECT

private slots:
    void methodOrder_data();
    void methodOrder();
    void baseDefaults();
    void deviceInformation();
    void viewPostsCommands();
};

void tst_HostContract::methodOrder_data()
{
    QTest::addColumn<const QMetaObject *>("meta");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("thread") << &CollectThread::staticMetaObject
                            << QStringList { "postDEvent(int,QMap<QString,QVariant>)",
                                             "control(int,QString)",
                                             "getDataLogDesc()",
                                             "changeLogData(QMap<int,QVariant>)",
                                             "getEventLogDesc()",
                                             "getView()",
                                             "loadConfig()",
                                             "create(void*)",
                                             "release(CollectThread*)",
                                             "setPortHandle(void*)",
                                             "flushUpsInfoSLot(QString,QVariant)",
                                             "poll()",
                                             "getWorkState()" };
    QTest::newRow("view") << &CollectView::staticMetaObject
                          << QStringList { "postDEvent(int,QMap<QString,QVariant>)",
                                           "setName(QString)",
                                           "setLanguage(int)",
                                           "refreshData()",
                                           "refreshLayout()",
                                           "flushData(QMap<int,QVariant>)",
                                           "flushUpsInfo(QString,QVariant)",
                                           "setUserInfo(QString,int)",
                                           "control(int,QString)" };
}

void tst_HostContract::methodOrder()
{
    QFETCH(const QMetaObject *, meta);
    QFETCH(QStringList, expected);
    QCOMPARE(meta->methodCount() - meta->methodOffset(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        // Looked up as a string-based connect does it: the position must be found by the text.
        const int index = meta->indexOfMethod(expected.at(i).toLatin1().constData());
        QVERIFY2(index == meta->methodOffset() + i, qPrintable(expected.at(i)));
    }
}

void tst_HostContract::baseDefaults()
{
    CollectThread thread;
    QCOMPARE(thread.getView(), nullptr);
    QCOMPARE(thread.create(nullptr), nullptr);
    QCOMPARE(thread.control(1003, QString()), 0);
    QCOMPARE(thread.getWorkState(), 0);
    QCOMPARE(thread.communicationState, -1);
    int marker = 0;
    thread.setPortHandle(&marker);
    QCOMPARE(thread.portHandle, &marker);
}

void tst_HostContract::deviceInformation()
{
    CollectThread thread;
    thread.flushData({ { 3, 1.5 }, { 12, 2 } });
    thread.flushData({ { 12, 7 } });
    QVERIFY(QMetaObject::invokeMethod(&thread, "flushUpsInfoSLot", Q_ARG(QString, "name"),
                                      Q_ARG(QVariant, "ups1")));
    const QMap<QString, QVariant> expected { { "12", 7 }, { "3", 1.5 }, { "name", "ups1" } };
    QCOMPARE(thread.deviceInformation, expected);
}

void tst_HostContract::viewPostsCommands()
{
    CollectView view;
    view.setName(QStringLiteral("ups1"));
    QSignalSpy spy(&view, SIGNAL(postDEvent(int, QMap<QString, QVariant>)));
    QCOMPARE(view.control(1003, QStringLiteral("x")), 0);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy[0][0].toInt(), 1003);
    const QVariantMap expected { { "name", "ups1" },
                                 { "controlId", 1003 },
                                 { "controlValue", "x" } };
    QCOMPARE(spy[0][1].toMap(), expected);
}

QTEST_MAIN(tst_HostContract)
#include "tst_hostcontract.moc"
