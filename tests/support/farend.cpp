#include "farend.h"

#include "measurementrows.h"
#include "settingrows.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

using namespace registermap;

namespace {

struct Synonym
{
    const char *client;
    const char *maker;
};

// clang-format off
constexpr Synonym wholeTexts[] = {
    // measurements
    { "remaining time", "battery time left" }, { "remaining capacity", "battery capacity left" },
    { "battery remaining time", "battery time left" }, { "battery remaining capacity", "battery capacity left" },
    { "remaining battery capacity", "battery capacity left" }, { "output load percentage", "output load" },
    { "output load state", "output mode" }, { "output state", "output mode" },
    { "output power", "output active power" }, { "modbus decode version", "version of this map" },
    { "device manufacturer", "manufacturer" }, { "type", "device type" }, { "name", "device name" },
    // settings
    { "battery numbers", "batteries in a row" }, { "battery ah", "battery capacity" },
    { "cell eod voltage for 0.6c", "cell end of discharge at 0.6 c" },
    { "cell eod voltage for 0.15c", "cell end of discharge at 0.15 c" }, { "derate rate enable", "derate enable" },
    { "device type select", "input" }, { "fan fault allow buzzer on", "fan fault allows buzzer" },
    { "derate output power factor", "output power factor" },
    { "ln connection reverse alarm", "neutral reverse alarm" }, { "power-on self-start", "self-start" },
    { "bypass voltage upper limit", "bypass upper limit" }, { "bypass voltage lower limit", "bypass lower limit" },
    { "self ageing current percent", "self ageing current" },
    { "battery low-voltage alarm coefficient", "battery low-voltage coefficient" },
    { "enable switch inverter", "enable switch to inverter" }, { "epo function enable", "epo function" },
    { "lcd backlight lighten time", "backlight time" }, { "snmp card communication protocol", "card protocol" },
    { "transformer coil turns ratio", "transformer turns ratio" }, { "ups maintenance period", "maintenance period" },
    { "inverter dc voltage rectification", "inverter dc rectification" },
    { "input phase a voltage rectification", "input voltage rectification" },
    { "input phase b voltage rectification", "input voltage rectification 2" },
    { "input phase c voltage rectification", "input voltage rectification 3" },
    { "input with transformer voltage rectification 1", "input transformer rectification" },
    { "input with transformer voltage rectification 2", "input transformer rectification 2" },
    { "output with transformer voltage rectification 1", "output transformer rectification" },
    { "output with transformer voltage rectification 2", "output transformer rectification 2" },
    // codes
    { "enable", "on" }, { "disable", "off" }, { "connect", "yes" }, { "unconnect", "no" }, { "stand alone", "alone" },
    { "parallel operation", "parallel" }, { "parallels eco", "parallel eco" }, { "input one phase", "one phase" },
    { "input three phase", "three phases" }, { "vrla battery", "vrla" }, { "lithium battery", "lithium" },
    { "modbus ascii", "ascii" }, { "modbus rtu", "rtu" }, { "disconnect", "disconnected" },
    { "equalized charge", "boost charge" }, { "load on bypass", "on bypass" }, { "load on inverter", "on inverter" },
    { "load on other", "other" }, { "pfc mode", "pfc" }, { "battery mode", "on battery" },
    { "normal run", "running" }, { "f&a clear", "fault and alarm clear" },
    { "freq. conversion", "frequency conversion" },
    // events
    { "inconsistentunused parallel software version", "inconsistent parallel software version" },
    { "battery number set error", "wrong number of batteries set" }, { "rectify scr fault", "rectifier scr fault" },
    { "input over current time out", "input over current timeout" },
    { "ups need maintenance", "ups needs maintenance" },
    { "over transfer times between bypass and inverter", "too many transfers between bypass and inverter" },
    { "over transfer times between battery and grid", "too many transfers between battery and grid" },
    { "inverter and output voltage is different", "inverter and output voltage differ" },
    { "bypass and output voltage is different", "bypass and output voltage differ" },
};

constexpr Synonym words[] = {
    { "inv", "inverter" }, { "rec", "rectifier" }, { "pf", "power factor" }, { "status", "state" },
    { "volt", "voltage" }, { "voltag", "voltage" }, { "alram", "alarm" },
    { "communicaiton", "communication" }, { "point", "" },
};

constexpr Synonym units[] = {
    { "hour", "h" }, { "days", "day" }, { "℃", "°c" }, { "c", "°c" }, { "kva", "kvar" },
};
// clang-format on

template <std::size_t count>
QString translated(const Synonym (&synonyms)[count], const QString &text)
{
    for (const Synonym &synonym : synonyms) {
        if (text == QString::fromUtf8(synonym.client))
            return QString::fromUtf8(synonym.maker);
    }
    return text;
}

// Without blanks and unit, which not every place shows.
QString bare(QString code)
{
    return code.remove(QRegularExpression(" |%$|hz$"));
}

// "Battery type: 0 VRLA, 1 lithium"; what follows a comma or semicolon in the name is a remark.
FarRegister described(const RegisterRow &row, int index)
{
    const QString meaning = QString::fromUtf8(row.meaning).toLower();
    FarRegister result;
    result.id = row.id + index;
    result.count = row.format == Format::Character ? row.count : 1;
    result.name = meaning.section(QRegularExpression("[:,;]"), 0, 0);
    if (index > 0)
        result.name += QString(" %1").arg(index + 1);
    for (const QString &code : meaning.section(": ", 1).split(", ", Qt::SkipEmptyParts))
        result.codes.insert(code.section(' ', 0, 0).toInt(),
                            code.section(' ', 1).remove(QRegularExpression("^is ")));
    result.format = row.format;
    result.scale = row.scale;
    result.unit = QString::fromUtf8(row.unit).toLower();
    return result;
}

void add(QMap<int, FarRegister> &all, const RegisterRow &row, int min, int max)
{
    for (int i = 0; i < row.count; i += row.format == Format::Character ? row.count : 1) {
        FarRegister far = described(row, i);
        far.min = min;
        far.max = max;
        all.insert(far.id, far);
    }
}

} // namespace

bool FarRegister::isShownAs(const QString &text, int raw) const
{
    if (!codes.isEmpty())
        return bare(inFarWords(text)) == bare(codes.value(raw, "no such code"));
    const auto match = QRegularExpression("^(-?\\d+(?:\\.(\\d+))?)\\s*(.*)$").match(text.toLower());
    const QString shownUnit = match.captured(3);
    const double half = 0.5 * std::pow(10, -match.captured(2).size()) + 1e-6;
    return match.hasMatch() && std::fabs(match.captured(1).toDouble() - value(raw)) <= half
        && (match.captured(2).isEmpty() || scale < 1)
        && (shownUnit.isEmpty() || shownUnit == unit || translated(units, shownUnit) == unit);
}

QMap<int, FarRegister> farSettings()
{
    QMap<int, FarRegister> all;
    for (const SettingRow &row : settingRows)
        add(all, row.registers, row.min, row.max);
    return all;
}

QMap<int, FarRegister> farMeasurements()
{
    QMap<int, FarRegister> all;
    for (const RegisterRow &row : measurementRows)
        add(all, row, 0, 0);
    return all;
}

FarRegister farRegister(const QMap<int, FarRegister> &registers, const QString &label)
{
    const QString name = inFarWords(label);
    for (const FarRegister &far : registers) {
        if (far.name == name)
            return far;
    }
    return {};
}

QString inFarWords(const QString &text)
{
    QStringList all = text.toLower().simplified().remove(QRegularExpression(":$")).split(' ');
    for (QString &word : all)
        word = translated(words, word);
    return translated(wholeTexts, all.join(' ').simplified());
}
