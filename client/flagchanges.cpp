#include "flagchanges.h"

#include "hostevents.h"

namespace {

constexpr int firstFlagId = 2000;

struct SpecialFlag
{
    int id; // data identifier, and key among the reported states
    int type;
};

constexpr SpecialFlag specialFlags[] = {
    { 2059, BatteryLowEvent },
    { 2082, AbnormalInputEvent },
};

// Walks the flags beside the data: both are in ascending order.
void compareEvents(const QMap<int, QVariant> &data, int eventCount, FlagChanges &result)
{
    auto point = data.lowerBound(firstFlagId);
    const QMap<int, int> before = result.reportedStates;
    auto reported = before.lowerBound(0);
    for (int k = 0; k < eventCount; ++k) {
        int state = 0;
        if (point != data.end() && point.key() == firstFlagId + k)
            state = (point++)->toInt();
        const bool known = reported != before.end() && reported.key() == k;
        const int last = known ? *reported++ : 0;
        if (state != last) {
            const bool appears = state == 1;
            result.appeared |= appears;
            result.changes.append({ FlagChangedEvent, appears ? k : eventCount + k, state });
        }
        if (!known || state != last)
            result.reportedStates.insert(k, state);
    }
}

} // namespace

FlagChanges findFlagChanges(const QMap<int, QVariant> &data, const QMap<int, int> &reportedStates,
                            int eventCount)
{
    FlagChanges result;
    result.reportedStates = reportedStates;
    compareEvents(data, eventCount, result);
    for (const SpecialFlag &flag : specialFlags) {
        const int state = data.value(flag.id).toInt();
        if (state == result.reportedStates.value(flag.id))
            continue;
        result.changes.append({ flag.type, std::nullopt, state });
        result.reportedStates.insert(flag.id, state);
    }
    return result;
}
