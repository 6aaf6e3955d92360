#include "answers/request.h"

#include "displaytext.h"
#include "hostvocabulary.h"
#include "lookup.h"

#include <QCoreApplication>

#include <algorithm>

using namespace HostContract;
using State = Request::State;

namespace {

using namespace std::chrono_literals;

constexpr auto proofTime = 60s;
// A host may hand a report on that is older than the answer.
constexpr int reportsUntilDifferent = 3;

// The value as the device will report it: "3005,18" asks for raw 18.
QString expectedText(const ParameterInformation &setting, const QString &value,
                     const QString &entered)
{
    if (!setting.combo.isEmpty())
        return entered + setting.unit;
    if (setting.type == TextValue)
        return entered.left(setting.length).trimmed();
    const float raw = value.section(QLatin1Char(','), 1).toFloat();
    return displayText(setting, { { setting.dataId, raw * setting.scale } });
}

bool isAtExpected(const Request &request, const DataReport &report)
{
    const ParameterInformation &setting = *request.setting;
    // Two options may share a value; displayText() shows the first.
    const QString option = request.expected.chopped(setting.unit.size());
    if (setting.combo.contains(option))
        return setting.combo.value(option) == optionAt(setting, report);
    return displayText(setting, report) == request.expected;
}

bool isProved(const CommandRow &row, const DataReport &report)
{
    int proofs = 0;
    for (const EffectRow &proof : row.proof) {
        if (proof.dataId == 0)
            continue;
        if (!report.contains(proof.dataId) || integerAt(report, proof.dataId) != proof.value)
            return false;
        ++proofs;
    }
    return proofs > 0;
}

QString nameOf(const CommandRow &row)
{
    const QString button = translated("tavoView", row.button.text);
    const QString report = translated("tavoClient", row.reportText);
    return !button.isEmpty() ? button
        : !report.isEmpty()  ? report
                            : QCoreApplication::translate("Request", "Command %1").arg(row.command);
}

struct StateText
{
    Tone tone;
    const char *text;
};

// In the order of Request::State.
constexpr StateText states[] = {
    { Tone::Plain, QT_TRANSLATE_NOOP("Request", "waiting") },
    { Tone::Alarm, QT_TRANSLATE_NOOP("Request", "not sent: this program has not passed it on") },
    { Tone::Good, QT_TRANSLATE_NOOP("Request", "accepted by the device") },
    { Tone::Good, QT_TRANSLATE_NOOP("Request", "confirmed by the device's values") },
    { Tone::Attention, QT_TRANSLATE_NOOP("Request", "accepted, but the device reports %1") },
    { Tone::Alarm, QT_TRANSLATE_NOOP("Request", "refused by the device") },
    { Tone::Alarm,
      QT_TRANSLATE_NOOP("Request", "no answer: it may have been carried out, or not") },
    { Tone::Alarm, QT_TRANSLATE_NOOP("Request", "not sent: no communication") },
};

} // namespace

std::optional<Request> requestOf(const Family &family, const QVariantMap &event,
                                 const QList<ParameterInformation *> &settings,
                                 const QDateTime &now)
{
    if (!event.contains(Key::controlId()))
        return std::nullopt;
    Request request;
    request.command = event.value(Key::controlId()).toInt();
    request.value = event.value(Key::controlValue()).toString();
    request.time = now;
    const CommandRow row = commandRow(family, request.command);
    if (row.form == CommandForm::ClosePort)
        return std::nullopt; // which no driver answers
    if (row.form == CommandForm::Download && request.value.isEmpty())
        return std::nullopt; // the user has chosen no file
    request.what = nameOf(row);
    if (!event.contains(Key::nodeName()))
        return request;
    const int id = request.value.section(QLatin1Char(','), 0, 0).toInt();
    const auto at = std::find_if(settings.begin(), settings.end(),
                                 [id](const auto *setting) { return setting->dataId == id; });
    const QString entered = event.value(Key::nodeValue()).toString();
    if (at != settings.end()) {
        request.setting = *at;
        request.expected = expectedText(**at, request.value, entered);
    }
    request.what = event.value(Key::nodeName()).toString() + QLatin1Char(' ')
        + (request.setting ? request.expected : entered);
    return request;
}

bool isAnsweredBy(const Request &request, const CommandAnswer &answer)
{
    const bool isOpen = request.state == State::Waiting || request.state == State::NotTaken;
    const bool isTaking = answer.kind == CommandAnswer::Kind::Taken;
    return isOpen && request.command == answer.command && request.value == answer.value
        && request.isTaken != isTaking;
}

void takeAnswer(Request &request, CommandAnswer::Kind kind)
{
    constexpr State answers[] = { State::Waiting, State::Accepted, State::Refused, State::NoAnswer,
                                  State::NotSent }; // in the order of Kind
    request.isTaken = true;
    request.state = answers[int(kind)];
    request.proofTime = QDeadlineTimer(proofTime);
}

bool takeReport(Request &request, const Family &family, const DataReport &report)
{
    const bool isOpen = request.state == State::Accepted || request.state == State::Different;
    if (!isOpen || (request.proofTime.hasExpired() && request.reports > 0))
        return false;
    const State before = request.state;
    if (!request.setting) {
        if (isProved(commandRow(family, request.command), report))
            request.state = State::Confirmed;
        ++request.reports;
    } else if (report.contains(request.setting->dataId)) {
        if (isAtExpected(request, report))
            request.state = State::Confirmed;
        else if (++request.reports >= reportsUntilDifferent)
            request.state = State::Different;
        request.reported = displayText(*request.setting, report);
    }
    return request.state != before;
}

QString statusText(const Request &request)
{
    QString state = translated("Request", states[int(request.state)].text);
    if (request.state == State::Different)
        state = state.arg(request.reported);
    return QStringList { request.time.toString(QStringLiteral("HH:mm:ss")), request.what, state }
        .join(QStringLiteral(" \u00b7 "));
}

Tone statusTone(const Request &request)
{
    return states[int(request.state)].tone;
}
