#include "deviceeditor.h"

#include "deviceform.h"
#include "windowmemory.h"

#include <QMessageBox>

namespace {
const QString standardSettings = QStringLiteral("9600,n,8,1");
}

DeviceEditor::DeviceEditor(DeviceHost &host, WindowMemory *memory, QWidget &window)
    : m_host(host)
    , m_memory(memory)
    , m_window(window)
{
}

void DeviceEditor::add()
{
    DeviceSpec spec;
    spec.settings = standardSettings;
    DeviceForm form(
        m_host, spec, [this](const DeviceSpec &entered) { return m_host.add(entered); }, &m_window);
    if (form.exec() == QDialog::Accepted)
        remember();
}

void DeviceEditor::edit(const HostDevice &device)
{
    // By name: the device may be another one by the time the form is closed.
    const QString name = device.name();
    DeviceForm form(
        m_host, device.spec(),
        [this, name](const DeviceSpec &entered) {
            HostDevice *edited = m_host.device(name);
            return edited ? m_host.replace(*edited, entered) : Outcome();
        },
        &m_window);
    if (form.exec() == QDialog::Accepted)
        remember();
}

void DeviceEditor::remove(const HostDevice &device)
{
    const QString name = device.name();
    const QString question = tr("Remove %1?\nIt is not monitored any more; its events stay in the "
                                "log.")
                                 .arg(name);
    const auto answer = QMessageBox::question(&m_window, tr("Remove device"), question,
                                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    HostDevice *removed = m_host.device(name);
    if (answer != QMessageBox::Yes || !removed)
        return;
    m_host.remove(*removed);
    remember();
}

void DeviceEditor::remember()
{
    if (m_memory)
        m_memory->setDevices(m_host.specs());
}
