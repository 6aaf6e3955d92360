// The script that a simulated device plays.
#include "targets.h"
#include "tools/upssim/simulator.h"

#include <cmath>

void fuzzScenario(const QByteArray &input)
{
    QString error;
    const auto script = parseScript(QString::fromUtf8(input), &error);
    require(script.has_value() == error.isEmpty());
    if (!script)
        return;
    Simulator simulator(1, 0);
    simulator.play(*script);
    for (int i = 0; i < 200; ++i)
        simulator.advance(0.5);
    for (const registermap::Block &block : registermap::blocks) {
        RegisterRequest request;
        request.function = block.function;
        request.address = block.address;
        request.count = block.count;
        require(simulator.registers().handle(request) == 0);
    }
    const double charge = simulator.model().charge();
    require(charge >= 0 && charge <= 1);
}
