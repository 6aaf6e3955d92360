// Prints the page docs/reference.md.
#include "sections.h"

#include <cstdio>

namespace {

const char introduction[] =
    R"(# Reference

All numbers and texts between client, driver and host, made from the tables that the plug-in is built
with: do not edit this page, build the target `update-reference`. A driver can be written from it and
[driver-contract.md](driver-contract.md); a host finds its own side in [host-contract.md](host-contract.md).

| | |
| --- | --- |
| driver | `%1.so` |
| upgrade program, below the application's folder | `%2` |

A driver hands on each value with `callback(identifier, value, context)`. What it does not send keeps its last value.
Until there is one, a measurement shows "-", a setting and a column of the data log 0, and an event is not present. Texts in this page stand as they are in the program: misspellings, and blanks
at either end, are bound.

)";

} // namespace

int main()
{
    const Family &family = deviceFamily();
    const QString page =
        QString::fromUtf8(introduction)
            .arg(QLatin1String(family.driverLibrary), QLatin1String(family.upgradeProgram))
        + measurementSections(family) + settingSections(family) + eventSection(family)
        + commandSection(family) + historySection(family.history) + dataLogSection(family);
    const QByteArray bytes = page.trimmed().toUtf8() + '\n';
    return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size())
        ? 0
        : 1;
}
