// What a user types for a setting, from the dialog to the driver's command.
#include "commands/commandtext.h"
#include "dialogs/dialog.h"
#include "hostvocabulary.h"
#include "lookup.h"
#include "targets.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

#include <cstring>

namespace {

constexpr float scales[] = { 0, 1, 0.1F, 0.01F, 0.5F, -1, 1e-30F, 1e30F };
constexpr int types[] = { IntegerValue, OneDecimal, TwoDecimals, TextValue };

// A setting, from the input's first six bytes.
ParameterInformation setting(const QByteArray &input)
{
    qint16 bounds[2];
    std::memcpy(bounds, input.constData() + 2, sizeof bounds);
    ParameterInformation record;
    record.dataId = 3000 + quint8(input.at(0));
    record.scale = scales[quint8(input.at(1)) % 8];
    record.type = types[quint8(input.at(1)) / 8 % 4];
    record.length = record.type == TextValue ? 16 : 0;
    record.min = bounds[0];
    record.max = bounds[1];
    return record;
}

} // namespace

void fuzzParameter(const QByteArray &input)
{
    if (input.size() < 6)
        return;
    ParameterInformation record = setting(input);
    static Dialog *const dialog = new Dialog;
    static QString request;
    static const auto connection =
        QObject::connect(dialog, &Dialog::postDEvent, [](int, const QMap<QString, QVariant> &map) {
            request = map.value(HostContract::Key::controlValue()).toString();
        });
    Q_UNUSED(connection)
    dialog->initial(&record);
    dialog->findChild<QLineEdit *>()->setText(QString::fromUtf8(input.mid(6)));
    request.clear();
    // A refusal waits for its answer.
    QTimer::singleShot(0, qApp, [] {
        if (QWidget *box = QApplication::activeModalWidget())
            box->close();
    });
    dialog->checkRange();
    QApplication::processEvents();
    if (request.isEmpty())
        return;
    require(request.startsWith(QString::number(record.dataId) + QLatin1Char(',')));
    const int raw = request.section(QLatin1Char(','), 1).toInt();
    require(record.type == TextValue || !record.hasRange()
            || (raw >= record.min && raw <= record.max));
    const CommandRow row = commandRow(deviceFamily(), HostContract::SetParameterCommand);
    require(commandText(row, request).back() == '\0');
}
