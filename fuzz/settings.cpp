// Settings of ports and devices: the text of a port, "serial.ini" and "dev.ini".
#include "deviceconfig.h"
#include "serial/serialini.h"
#include "serial/serialport.h"
#include "targets.h"

#include <QFile>

#include <pty.h>

namespace {

void write(const char *path, const QByteArray &content)
{
    QFile file(QString::fromLatin1(path));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

void openPort(const QString &text)
{
    static int master = -1;
    static int slave = -1;
    static char name[64] = "";
    if (master < 0)
        require(openpty(&master, &slave, name, nullptr, nullptr) == 0);
    const auto settings = parseLineSettings("fuzz", text);
    require(!settings
            || (baudRow(settings->BaudRate) && settings->DataBits >= Data5
                && settings->DataBits <= Data8 && settings->Parity >= ParityNone
                && settings->Parity <= ParityMark && settings->StopBits >= Stop1
                && settings->StopBits <= Stop1_5));
    SerialPort port;
    require(port.CommOpen(QString::fromLatin1(name), text, 0) == settings.has_value());
}

} // namespace

void fuzzSettings(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const QByteArray text = input.mid(1);
    switch (input.at(0)) {
    case 'p':
        openPort(QString::fromUtf8(text));
        break;
    case 's':
        write("serial.ini", text);
        require(readSerialIni(QStringLiteral("/dev/ttyS0")).timeout >= 0);
        break;
    case 'd':
        write("dev.ini", text);
        require(readDeviceConfig(QStringLiteral("."), QStringLiteral("ups1"), 96)
                    .settings.eventChoice.size()
                == 96);
        break;
    default:
        break;
    }
}
