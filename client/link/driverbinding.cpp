#include "link/driverbinding.h"

#include <QDebug>

#include <atomic>
#include <cxxabi.h>
#include <exception>

namespace {

// A driver's exception must not leave its thread, but the thread's own cancellation has to.
template <typename Call> int guarded(const char *entry, const Call &call)
{
    try {
        return call();
    } catch (abi::__forced_unwind &) {
        throw;
    } catch (const std::exception &error) {
        qWarning() << "driver" << entry << "threw:" << error.what();
    } catch (...) {
        qWarning() << "driver" << entry << "threw";
    }
    return 0;
}

// Once: a host has many clients, and all of them want the same driver.
void warnOfMissing(const QString &name)
{
    static std::atomic<bool> isTold { false };
    if (!isTold.exchange(true))
        qWarning().noquote() << "driver" << name
                             << "cannot be loaded: no device will answer. It is looked for in "
                                "LD_LIBRARY_PATH, in the"
                                " program's DT_RPATH and in the system's library folders";
}

} // namespace

bool DriverBinding::load()
{
    if (m_library)
        return true;
    // A driver's own start-up code runs here, and it may throw.
    try {
        m_library = std::make_unique<QLibrary>();
        m_library->setFileName(m_name);
        if (!m_library->load()) {
            qDebug() << m_library->errorString();
            warnOfMissing(m_name);
            m_library.reset();
            return false;
        }
        m_query = reinterpret_cast<QueryFunction>(m_library->resolve("Query"));
        if (!m_query)
            qDebug() << "not had Query";
        m_control = reinterpret_cast<ControlFunction>(m_library->resolve("Control"));
        if (!m_control)
            qDebug() << "not had Control";
        return true;
    } catch (abi::__forced_unwind &) {
        throw;
    } catch (...) {
        qDebug() << "load lib fail";
        // The library object stays: a second try would be given the library as it was left, half
        // started, with all its entries.
        return false;
    }
}

void DriverBinding::unload()
{
    if (m_library)
        m_library->unload();
    m_library.reset();
    m_query = nullptr;
    m_control = nullptr;
}

int DriverBinding::query(PortDescriptor port, int unit, DataCallback callback, void *context) const
{
    if (!m_query || !port.device)
        return 0;
    return guarded("Query", [&] { return m_query(&port, unit, callback, context); });
}

int DriverBinding::control(PortDescriptor port, int unit, char *command, void *context) const
{
    if (!m_control || !port.device)
        return 0;
    return guarded("Control", [&] { return m_control(&port, unit, command, context); });
}
