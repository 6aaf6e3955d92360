// The script that a simulated device plays.
#include "history/historyrecord.h"
#include "simulator.h"
#include "targets.h"

#include <cmath>
#include <type_traits>

using namespace upssim;

// The programs hold both sides of a history: the client's records and the device's.
static_assert(!std::is_same_v<::HistoryRecord, upssim::HistoryRecord>, "one name, two types");

void fuzzScenario(const QByteArray &input)
{
    const auto script = parseScript(QString::fromUtf8(input));
    require(bool(script) == script.error().isEmpty());
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
