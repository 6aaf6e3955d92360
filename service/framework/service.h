#pragma once

#include "servicetypes.h"

struct ServiceCommandLine;

/** With what a service program ends. */
enum class ServiceExit {
    Success = 0,
    RequestFailed = 1,      // a switch could not be carried out; the reason is on stderr
    Usage = 2,              // the command line is wrong
    StartFailed = 3,        // start() returned false
    AlreadyRunning = 4,     // another instance runs
    NoControlSocket = 5,    // no private runtime folder, or no socket in it
    StopHung = stopHungCode // the stop did not end within its limit, so the process was ended
};

/**
 * A program that runs as a background service: derive, override the callbacks, call exec().
 *
 * exec() does what the command line asks for: install, remove or control the service, or run it,
 * in the foreground or for the service manager. While it runs, start() is called first, stop()
 * last, and the others as requests arrive through the control socket.
 *
 * Threads:   all callbacks in the thread of exec(), between the events of its loop. SIGTERM,
 *            SIGINT, SIGHUP and "-terminate" end that loop; when the process is still there after
 *            the stop limit, because a callback hangs, it ends with StopHung.
 * Ownership: exec() makes the QCoreApplication unless there is one.
 * Errors:    the exit code of exec(), a text on stderr. Never throws.
 */
class Service
{
public:
    /** @param name  of the service and its unit; see isServiceName()
     *  @param argc, argv  must outlive this object */
    Service(int &argc, char **argv, const QString &name);
    virtual ~Service();
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    /** @return a ServiceExit as int, or the code with which the program ended its event loop */
    int exec();

    QString name() const { return m_name; }

    /** What follows "--" on the command line. */
    QStringList arguments() const { return m_arguments; }

    void setDescription(const QString &text) { m_description = text; }
    void setVersion(const QString &version) { m_version = version; }

    /** From the wish to stop to the end of the process, at most; 10 s unless set. */
    void setStopLimit(std::chrono::milliseconds limit) { m_stopLimit = limit; }

protected:
    /** Begins the work; it goes on in the event loop. false: exec() ends with StartFailed. */
    virtual bool start() = 0;
    virtual void stop() { }

    /** These return false for what the service cannot do, which the asking side is told. */
    virtual bool pause() { return false; }
    virtual bool resume() { return false; }
    virtual bool processCommand(int command);

private:
    int carryOut(const ServiceCommandLine &line);
    ServiceExit install(const ServiceCommandLine &line);
    ServiceExit uninstall(const ServiceCommandLine &line);
    int run(const ServiceCommandLine &line);
    ServiceExit control(const ServiceCommandLine &line);
    ServiceExit conclude(const ServiceCommandLine &line, const ServiceResult &result);

    int &m_argc;
    char **m_argv;
    QString m_name;
    QString m_description;
    QString m_version;
    QStringList m_arguments;
    std::chrono::milliseconds m_stopLimit { 10000 };
};
