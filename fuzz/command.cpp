// A command's number and value, from the host to the driver.
#include "commands/commandtext.h"
#include "line.h"
#include "lookup.h"
#include "targets.h"

#include <algorithm>
#include <iterator>

extern "C" int Control(PortDescriptor *port, int unit, char *command, void *context);

void fuzzCommand(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const auto index = quint8(input.at(0));
    const Rows<CommandRow> rows = deviceFamily().commands;
    const int id = index < rows.size() ? rows[index].command : index;
    CommandText text = commandText(commandRow(deviceFamily(), id), QString::fromUtf8(input.mid(1)));
    const auto end = std::find(text.begin(), text.end(), '\0');
    require(end != text.end()
            && std::all_of(end, text.end(), [](char byte) { return byte == '\0'; }));
    // Whatever the command, a device that is not there refuses it.
    FuzzLine line(FuzzLine::Transport::Rtu, {});
    require(Control(line.descriptor(), 1, text.data(), nullptr) == 0);
}
