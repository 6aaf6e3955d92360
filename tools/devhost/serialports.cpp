#include "serialports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int levelsToUsb = 5; // from a tty to the USB device that carries it, at most

QString attribute(const QString &file)
{
    QFile reader(file);
    return reader.open(QIODevice::ReadOnly) ? QString::fromUtf8(reader.readLine(256)).trimmed()
                                            : QString();
}

/** Maker and product of the USB device above a tty; empty for any other. */
QString usbDescription(const QString &device)
{
    QString directory = device;
    for (int i = 0; i < levelsToUsb; ++i) {
        const QString product = attribute(directory + QLatin1String("/product"));
        if (!product.isEmpty())
            return (attribute(directory + QLatin1String("/manufacturer")) + QLatin1Char(' ')
                    + product)
                .trimmed();
        directory = QFileInfo(directory).path();
    }
    return {};
}

} // namespace

QList<SerialPortInfo> serialPorts(const QString &sysfs)
{
    QList<SerialPortInfo> ports;
    const QDir ttys(sysfs + QLatin1String("/class/tty"));
    for (const QString &name : ttys.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString device =
            QFileInfo(ttys.filePath(name) + QLatin1String("/device")).canonicalFilePath();
        const QString driver =
            QFileInfo(QFileInfo(device + QLatin1String("/driver")).canonicalFilePath()).fileName();
        // Virtual terminals have no device; a port type of 0 is a place without a chip.
        if (device.isEmpty() || driver.isEmpty()
            || attribute(ttys.filePath(name) + QLatin1String("/type")) == QLatin1String("0"))
            continue;
        const QString usb = usbDescription(device);
        ports << SerialPortInfo { QLatin1String("/dev/") + name, usb.isEmpty() ? driver : usb };
    }
    return ports;
}
