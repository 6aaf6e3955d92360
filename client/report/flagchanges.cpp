#include "report/flagchanges.h"

#include "hostvocabulary.h"

using namespace HostContract;

namespace {

// Walks the flags beside the data: both are in ascending order.
void compareEvents(const DataReport &data, int eventCount, FlagChanges &result)
{
    auto point = data.lowerBound(firstEventId);
    const QMap<int, int> before = result.reportedStates;
    auto reported = before.lowerBound(0);
    for (int k = 0; k < eventCount; ++k) {
        int state = 0;
        if (point != data.end() && point.key() == firstEventId + k)
            state = integerOf(*point++);
        const bool known = reported != before.end() && reported.key() == k;
        const int last = known ? *reported++ : 0;
        if (state != last) {
            const bool appears = state == 1;
            result.appeared |= appears;
            result.changes.append({ k, FlagChangedEvent, appears ? k : eventCount + k, state });
        }
        if (!known || state != last)
            result.reportedStates.insert(k, state);
    }
}

} // namespace

FlagChanges findFlagChanges(const DataReport &data, const QMap<int, int> &reportedStates,
                            int eventCount, Rows<SpecialFlagRow> specialFlags)
{
    FlagChanges result;
    result.reportedStates = reportedStates;
    compareEvents(data, eventCount, result);
    for (const SpecialFlagRow &flag : specialFlags) {
        const int id = flag.dataId();
        const int state = integerAt(data, id);
        if (state == result.reportedStates.value(id))
            continue;
        result.changes.append({ id, flag.type, std::nullopt, state });
        result.reportedStates.insert(id, state);
    }
    return result;
}
