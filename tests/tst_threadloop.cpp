#include "guardedtest.h"
#include "threadloop.h"

#include <QSocketNotifier>

#include <atomic>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

/** What happens in a thread, in words; its loop ends with quit(). */
struct Script
{
    QStringList seen;
    QObject *context = nullptr; // lives in the thread

    void say(const QString &what) { seen.append(what); }
    void quit() { QThread::currentThread()->quit(); }
    void after(std::chrono::milliseconds time, const std::function<void()> &work)
    {
        QTimer::singleShot(time, context, work);
    }
    QTimer *timer(std::chrono::milliseconds interval, const std::function<void()> &work)
    {
        auto *timer = new QTimer(context);
        QObject::connect(timer, &QTimer::timeout, context, work);
        timer->start(interval);
        return timer;
    }
    QAbstractEventDispatcher *loop() { return QAbstractEventDispatcher::instance(); }
};

using Scenario = std::function<void(Script &)>;

QStringList play(const Scenario &scenario, QAbstractEventDispatcher *dispatcher)
{
    Script script;
    std::atomic<bool> hasEnded { false }; // the sanitizer does not see what Qt's wait() says
    QThread thread;
    if (dispatcher)
        thread.setEventDispatcher(dispatcher);
    QObject context;
    script.context = &context;
    context.moveToThread(&thread);
    QMetaObject::invokeMethod(&context, [&] { scenario(script); });
    QObject::connect(
        &thread, &QThread::finished, &context,
        [&] {
            qDeleteAll(context.children());
            context.moveToThread(QCoreApplication::instance()->thread());
            hasEnded = true;
        },
        Qt::DirectConnection);
    thread.start();
    if (!thread.wait(20000) || !hasEnded)
        qFatal("the loop does not end");
    return script.seen;
}

/** Both ends of a pipe. */
struct Pipe
{
    Pipe() { ok = pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0; }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    bool put() const { return write(ends[1], "x", 1) == 1; }
    int take() const
    {
        char byte = 0;
        return int(read(ends[0], &byte, 1));
    }

    int ends[2] = { -1, -1 };
    bool ok = false;
};

// Those that are due at one time fire in the order of their times, none before its own.
void timers(Script &script)
{
    QElapsedTimer clock;
    clock.start();
    for (const auto time : { 90ms, 30ms, 60ms, 0ms }) {
        script.after(time, [&script, time, clock] {
            script.say(QString("%1 %2").arg(time.count()).arg(clock.elapsed() >= time.count() - 5));
        });
    }
    script.after(150ms, [&script] { script.quit(); });
    QThread::msleep(100);
}

void repeated(Script &script)
{
    auto *count = new QTimer(script.context); // holds a number only
    QTimer *ticks = script.timer(10ms, [&script, count] {
        count->setProperty("n", count->property("n").toInt() + 1);
        if (count->property("n").toInt() == 5) {
            script.say("five");
            script.quit();
        }
    });
    const auto known = script.loop()->registeredTimers(ticks);
    script.say(QString("%1 of %2 ms").arg(known.size()).arg(known.first().interval));
    const int left = script.loop()->remainingTime(ticks->timerId());
    script.say(left >= 0 && left <= 10 ? "to come" : QString::number(left));
    script.say(QString::number(script.loop()->registeredTimers(count).size()));
}

// By their own slot, by another's, and with their object.
void stopped(Script &script)
{
    QTimer *own = nullptr;
    own = script.timer(5ms, [&script, &own] {
        script.say("own");
        own->stop();
    });
    auto *const holder = new QObject(script.context);
    auto *const gone = new QTimer(holder);
    QObject::connect(gone, &QTimer::timeout, script.context, [&script] { script.say("gone"); });
    gone->start(20);
    script.after(10ms, [holder] { delete holder; });
    QTimer *later = script.timer(40ms, [&script] { script.say("later"); });
    script.after(20ms, [&script, later] {
        script.say("stops it");
        later->stop();
    });
    script.after(80ms, [&script] { script.quit(); });
    QEventLoop loop;
    QTimer::singleShot(100, &loop, &QEventLoop::quit);
    loop.exec();
}

// A slot that runs a loop of its own is not called within it; others are.
void nested(Script &script)
{
    int depth = 0;
    int deepest = 0;
    int others = 0;
    script.timer(5ms, [&] { ++others; });
    QTimer *outer = script.timer(5ms, [&] {
        deepest = std::max(deepest, ++depth);
        QEventLoop loop;
        QTimer::singleShot(40, &loop, &QEventLoop::quit);
        loop.exec();
        --depth;
    });
    QEventLoop loop;
    QTimer::singleShot(100, &loop, &QEventLoop::quit);
    loop.exec();
    outer->stop();
    script.say(QString("%1 %2").arg(deepest).arg(others > 2));
    script.quit();
}

void sockets(Script &script)
{
    const Pipe pipe;
    QSocketNotifier readable(pipe.ends[0], QSocketNotifier::Read);
    QSocketNotifier writable(pipe.ends[1], QSocketNotifier::Write);
    QEventLoop loop;
    QObject::connect(&readable, &QSocketNotifier::activated, script.context, [&] {
        const int got = pipe.take();
        script.say(got > 0 ? "byte" : "end");
        if (got <= 0)
            loop.quit();
    });
    QObject::connect(&writable, &QSocketNotifier::activated, script.context, [&] {
        script.say("room");
        writable.setEnabled(false);
    });
    readable.setEnabled(false);
    script.say(pipe.ok && pipe.put() ? "put" : "no pipe");
    script.after(20ms, [&] { readable.setEnabled(true); });
    script.after(60ms, [&] {
        script.say("closed");
        writable.setEnabled(false);
        close(std::exchange(const_cast<int &>(pipe.ends[1]), -1));
    });
    loop.exec();
    script.quit();
}

// Turns that do not wait tell whether they did anything.
void turns(Script &script)
{
    const auto turn = [&script](QEventLoop::ProcessEventsFlags flags) {
        return script.loop()->processEvents(flags) ? "did" : "did nothing";
    };
    while (script.loop()->processEvents(QEventLoop::AllEvents)) { }
    script.say(turn(QEventLoop::AllEvents));
    QMetaObject::invokeMethod(
        script.context, [&] { script.say("posted"); }, Qt::QueuedConnection);
    script.say(turn(QEventLoop::AllEvents));
    const Pipe pipe;
    QSocketNotifier readable(pipe.ends[0], QSocketNotifier::Read);
    QObject::connect(&readable, &QSocketNotifier::activated, script.context, [&] {
        pipe.take();
        script.say("byte");
    });
    while (script.loop()->processEvents(QEventLoop::AllEvents)) { }
    pipe.put();
    script.say(turn(QEventLoop::ExcludeSocketNotifiers));
    script.say(turn(QEventLoop::AllEvents));
    script.say(turn(QEventLoop::AllEvents));
    script.quit();
}

// From another thread: a call is carried out at once, and so is the end of the loop.
void others(Script &script)
{
    QElapsedTimer clock;
    clock.start();
    QThread *const home = QThread::currentThread();
    const std::unique_ptr<QThread> other(QThread::create([&] {
        QThread::msleep(30);
        QMetaObject::invokeMethod(script.context, [&] { script.say("called"); });
        QThread::msleep(30);
        home->quit();
    }));
    other->start();
    script.timer(10000ms, [&] { script.say("late"); });
    QEventLoop loop;
    loop.exec(); // ends with the thread's
    script.say(clock.elapsed() < 5000 ? "in time" : "slow");
    other->wait();
}

} // namespace

/** The event loop of a client's thread, beside Qt's own. */
class tst_ThreadLoop : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("QT_NO_GLIB", "1"); } // whose order of sources is its own

    void firesTimers() { compare(timers); }
    void repeatsTimers() { compare(repeated); }
    void stopsTimers() { compare(stopped); }
    void nestsLoops() { compare(nested); }
    void watchesSockets() { compare(sockets); }
    void tellsOfTurns() { compare(turns); }
    void hearsOtherThreads() { compare(others); }

private:
    static void compare(const Scenario &scenario)
    {
        const QStringList expected = play(scenario, nullptr);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(play(scenario, new ThreadLoop).join("; "), expected.join("; "));
    }
};

QTEST_GUILESS_MAIN(tst_ThreadLoop)
#include "tst_threadloop.moc"
