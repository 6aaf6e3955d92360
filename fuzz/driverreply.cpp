// What a device answers to the sample driver.
#include "line.h"
#include "registermap.h"
#include "targets.h"

#include <cmath>

extern "C" int Query(PortDescriptor *port, int unit, DataCallback callback, void *context);
extern "C" int Control(PortDescriptor *port, int unit, char *command, void *context);

void fuzzDriverReply(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const int choice = input.at(0);
    const auto transport = choice & 1 ? FuzzLine::Transport::Tcp : FuzzLine::Transport::Rtu;
    FuzzLine line(transport, input.mid(1));
    int count = 0;
    if (choice & 2) {
        char command[50] = "20,history.csv";
        Control(line.descriptor(), 1, command, &count);
        return;
    }
    const int outcome = Query(
        line.descriptor(), 1,
        [](int id, float value, void *context) {
            require(id >= registermap::firstEvent
                    && id < registermap::firstMeasurement + registermap::measurementCount
                    && std::isfinite(value));
            ++*static_cast<int *>(context);
        },
        &count);
    require((outcome != 0) == (count > 0)); // all values or none
}
