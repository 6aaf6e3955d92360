#include "driverbinding.h"

#include <QDebug>

bool DriverBinding::load()
{
    if (m_library)
        return true;
    // A driver's own start-up code runs here, and it may throw.
    try {
        m_library = std::make_unique<QLibrary>();
        m_library->setFileName(QStringLiteral("libkx300_g4_6-20k"));
        if (!m_library->load()) {
            qDebug() << m_library->errorString();
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

int DriverBinding::query(PortDescriptor port, int address, DataCallback callback,
                         void *context) const
{
    return m_query && port.device ? m_query(&port, address, callback, context) : 0;
}

int DriverBinding::control(PortDescriptor port, int address, char *command, void *context) const
{
    return m_control && port.device ? m_control(&port, address, command, context) : 0;
}
