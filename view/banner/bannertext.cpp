#include "banner/bannertext.h"

#include "lookup.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace {

DeviceState stateOf(const DataReport &report, int id, Rows<StateRow> rows)
{
    if (id == 0 || !report.contains(id))
        return DeviceState::Unknown;
    const int value = integerAt(report, id);
    const auto *row = std::find_if(rows.begin(), rows.end(),
                                   [value](const StateRow &r) { return r.value == value; });
    return row != rows.end() ? row->state : DeviceState::Unknown;
}

QString numberText(const DataReport &report, int id)
{
    return id != 0 && report.contains(id) ? QString::number(integerAt(report, id))
                                          : QStringLiteral("\u2013");
}

// What holds at once. The mode tells why, the output's what the load has.
QVector<DeviceState> statesOf(const Family &family, const DataReport &report)
{
    using State = DeviceState;
    const StateTables &tables = family.states;
    const State mode = stateOf(report, tables.modeId, tables.modes);
    const State output = stateOf(report, tables.outputId, tables.outputs);
    const bool isOutputTold = tables.outputId != 0 && report.contains(tables.outputId);
    if (output == State::OutputOff || (mode == State::Shutdown && !isOutputTold))
        return mode == State::Fault ? QVector<State> { State::OutputOff, State::Fault }
                                    : QVector<State> { State::OutputOff };
    if (mode == State::Eco)
        return { mode }; // on bypass on purpose
    QVector<State> states { mode };
    if (output == State::OnBypass)
        states.append(output);
    return states;
}

struct SevereRow
{
    DeviceState state;
    const char *text;
};

// Worst first; the overload stands between battery and fault.
constexpr SevereRow severe[] = {
    { DeviceState::OutputOff, QT_TRANSLATE_NOOP("StateBanner", "OUTPUT OFF") },
    { DeviceState::Fault, QT_TRANSLATE_NOOP("StateBanner", "FAULT") },
    { DeviceState::OnBattery, QT_TRANSLATE_NOOP("StateBanner", "ON BATTERY") },
    { DeviceState::OnBypass,
      QT_TRANSLATE_NOOP("StateBanner", "ON BYPASS \u2013 load not protected") },
};

struct MildRow
{
    DeviceState state;
    Tone tone;
    const char *text;
};

constexpr MildRow mild[] = {
    { DeviceState::Unknown, Tone::Plain, QT_TRANSLATE_NOOP("StateBanner", "State unknown") },
    { DeviceState::Normal, Tone::Good, QT_TRANSLATE_NOOP("StateBanner", "Normal") },
    { DeviceState::Eco, Tone::Good, QT_TRANSLATE_NOOP("StateBanner", "ECO") },
    { DeviceState::Starting, Tone::Attention, QT_TRANSLATE_NOOP("StateBanner", "Starting") },
    { DeviceState::Standby, Tone::Attention, QT_TRANSLATE_NOOP("StateBanner", "Standby") },
    { DeviceState::Testing, Tone::Attention, QT_TRANSLATE_NOOP("StateBanner", "Battery test") },
    { DeviceState::Shutdown, Tone::Attention, QT_TRANSLATE_NOOP("StateBanner", "Standby") },
};

BannerText deviceText(const Family &family, const DataReport &report)
{
    const QVector<DeviceState> states = statesOf(family, report);
    const bool hasOutput = !states.contains(DeviceState::OutputOff);
    const bool isOverloaded = hasOutput && numberAt(report, family.ids.load) > 100;
    QStringList words;
    for (const SevereRow &row : severe) {
        if (states.contains(row.state))
            words.append(translated("StateBanner", row.text));
        if (row.state == DeviceState::Fault && isOverloaded)
            words.append(QCoreApplication::translate("StateBanner", "OVERLOAD"));
    }
    const bool isBypassAll = words.size() == 1 && states.contains(DeviceState::OnBypass);
    Tone tone = isBypassAll ? Tone::Attention : Tone::Alarm;
    for (const MildRow &row : mild) {
        if (words.isEmpty() && states.contains(row.state)) {
            tone = row.tone;
            words.append(translated("StateBanner", row.text));
        }
    }
    const bool isBatteryUsed =
        states.contains(DeviceState::OnBattery) || states.contains(DeviceState::Testing);
    if (isBatteryUsed && hasOutput)
        words << QCoreApplication::translate("StateBanner", "%1 min")
                     .arg(numberText(report, family.ids.autonomy))
              << QCoreApplication::translate("StateBanner", "%1 %")
                     .arg(numberText(report, family.ids.capacity));
    if (hasOutput && !isBypassAll)
        words << QCoreApplication::translate("StateBanner", "load %1 %")
                     .arg(numberText(report, family.ids.load));
    return { tone, words.join(QStringLiteral(" \u00b7 ")) };
}

QString lostText(const BannerFacts &facts)
{
    const char *const texts[2][2] = {
        { QT_TRANSLATE_NOOP("StateBanner", "NO COMMUNICATION"),
          QT_TRANSLATE_NOOP("StateBanner", "NO COMMUNICATION \u2013 last values") },
        { QT_TRANSLATE_NOOP("StateBanner", "NO COMMUNICATION since %1"),
          QT_TRANSLATE_NOOP("StateBanner", "NO COMMUNICATION since %1 \u2013 last values") },
    };
    const bool isKnown = !facts.lostSince.isEmpty();
    const QString text = translated("StateBanner", texts[isKnown][facts.hasReport]);
    return isKnown ? text.arg(facts.lostSince) : text;
}

} // namespace

BannerText bannerText(const Family &family, const BannerFacts &facts)
{
    if (facts.isLinkLost)
        return { Tone::Alarm, lostText(facts) };
    if (!facts.hasReport)
        return { Tone::Plain,
                 QCoreApplication::translate("StateBanner", "Waiting for the device") };
    return deviceText(family, facts.report);
}
