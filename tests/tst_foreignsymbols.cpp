#include "pluginharness.h"
#include "ptypair.h"

#include <memory>

/** The plug-in beside a library that was loaded first, for all to see, and has the same names. */
class tst_ForeignSymbols : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_foreign.setLoadHints(QLibrary::ExportExternalSymbolsHint);
        QVERIFY2(m_foreign.load(), qPrintable(m_foreign.errorString()));
        m_client.reset(clientOf(PLUGIN_FILE));
    }

    void cleanup()
    {
        const auto calls = reinterpret_cast<int (*)()>(m_foreign.resolve("foreignCalls"));
        QCOMPARE(calls(), 0);
        GuardedTest::cleanup();
    }

    // What the client hands to the driver is its own: the callback, and the port's functions.
    void cycle()
    {
        const PtyPair line;
        fakeDriverIn("libkx300_g4_6-20k")
            .onQuery([](PortDescriptor &port, int, const FakeDriver::Callback &deliver) {
                char bytes[] = "ask";
                port.write(&port, bytes, 3);
                deliver(4176, port.read(&port, bytes, 3) == 3 ? 42.0f : 0.0f);
                return 1;
            });
        configure(*m_client, "ups1", "portName=" + line.name().toLocal8Bit() + "\n");
        line.send("yes");
        m_client->poll();
        QCOMPARE(line.receive(3), QByteArray("ask"));
        QCOMPARE(m_client->deviceInformation.value("upsLoad").toInt(), 42);
    }

    // One exported function that calls another.
    void withinThePlugin()
    {
        QLibrary plugin(PLUGIN_FILE);
        const auto build = reinterpret_cast<int (*)(unsigned char *, int, int, int, int)>(
            plugin.resolve("buildCmd"));
        unsigned char frame[8] = {};
        build(frame, 1, 3, 0, 1);
        QCOMPARE(QByteArray(reinterpret_cast<char *>(frame), sizeof frame).toHex(),
                 QByteArray("010300000001840a"));
    }

    void cleanupTestCase() { m_client.reset(); }

private:
    QLibrary m_foreign { FOREIGN_FILE };
    std::unique_ptr<CollectThread> m_client;
};

QTEST_GUILESS_MAIN(tst_ForeignSymbols)
#include "tst_foreignsymbols.moc"
