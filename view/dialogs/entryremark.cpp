#include "dialogs/entryremark.h"

#include "dialogs/settingvalue.h"
#include "displaytext.h"

#include <QCoreApplication>

EntryRemark remarkOn(const ParameterInformation &setting, const QString &typed)
{
    if (typed.isEmpty())
        return {};
    if (setting.type == TextValue) {
        const QString cut = typed.left(setting.length);
        if (cut == typed)
            return {};
        return { Tone::Attention,
                 QCoreApplication::translate("EntryRemark", "Will be cut to %1").arg(cut) };
    }
    bool isNumber = false;
    typed.toDouble(&isNumber);
    if (!isNumber)
        return { Tone::Alarm,
                 QCoreApplication::translate("EntryRemark", "Not a number: counts as 0") };
    const float raw = rawFromTyped(typedNumber(typed), setting.scale);
    const int rounded = roundedRaw(raw);
    const bool isOutside = setting.hasRange() && (rounded < setting.min || rounded > setting.max);
    if (isOutside || !isSendable(raw))
        return { Tone::Alarm, QCoreApplication::translate("EntryRemark", "Out of range") };
    if (nearlyEqual(raw, float(rounded)))
        return {};
    const QString sent =
        displayText(setting, { { setting.dataId, float(rounded) * setting.scale } });
    return { Tone::Attention,
             QCoreApplication::translate("EntryRemark", "Will be sent as %1").arg(sent) };
}
