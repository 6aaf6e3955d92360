#pragma once

#include "collectview.h"
#include "datareport.h"
#include "guardedtest.h"
#include "tavoclient.h"
#include "upssimprocess.h"

/**
 * A UPS from end to end: simulator, pseudo-terminal, sample driver, client and view, and between
 * client and view this object in the place of the host.
 *
 * Threads: GUI thread only; the client polls in it.
 */
class UpsWalk : public QObject
{
public:
    struct Post
    {
        int type;
        QVariantMap map;
    };

    UpsWalk();

    /** Starts the simulator and shows a user who may control what it says. */
    bool start();

    /** Lets the client do a cycle. @return false when there was no report of the device */
    bool poll();

    /** Lets the client carry out what the view asked for, without a cycle. */
    void carryOut() { m_client.check_set_command(); }

    /** What the client and its view posted since the last look. */
    QVector<Post> takePosts() { return std::exchange(m_posts, {}); }

    UpsSimProcess &ups() { return m_ups; }
    tavoClient &client() { return m_client; }
    CollectView &view() { return *m_view; }
    /** The latest report. */
    const DataReport &report() const { return m_report; }

    /** The last write that the UPS got: "command 4 accepted"; empty when none came since the last
     *  look. */
    QByteArray takeWrite();

private:
    void take(int type, const QVariantMap &map);

    UpsSimProcess m_ups;
    tavoClient m_client;
    CollectView *m_view; // the client's
    QVector<Post> m_posts;
    DataReport m_report;
    QByteArray m_lastWrite = "0";
};

/** Base of the walks: each test has a UPS of its own. */
class WalkTest : public GuardedTest
{
    Q_OBJECT

protected slots:
    void init()
    {
        GuardedTest::init();
        m_walk = std::make_unique<UpsWalk>();
        QVERIFY2(m_walk->start(), qPrintable(m_walk->ups().message()));
    }

    void cleanup()
    {
        m_walk.reset();
        GuardedTest::cleanup();
    }

protected:
    std::unique_ptr<UpsWalk> m_walk;
};
