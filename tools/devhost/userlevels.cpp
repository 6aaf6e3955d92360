#include "userlevels.h"

#include <QMessageBox>

#include <iterator>

namespace {

// clang-format off
constexpr const char *levelNames[] = {
    QT_TRANSLATE_NOOP("UserLevels", "Observer"),
    QT_TRANSLATE_NOOP("UserLevels", "Operator"),
    QT_TRANSLATE_NOOP("UserLevels", "Administrator"),
};
// clang-format on

constexpr int lastLevel = int(std::size(levelNames)) - 1;

} // namespace

UserLevels::UserLevels(int level, QWidget *parent)
    : QComboBox(parent)
    , m_level(qBound(0, level, lastLevel))
{
    setObjectName(QStringLiteral("userLevel"));
    for (const char *name : levelNames)
        addItem(tr(name));
    setCurrentIndex(m_level);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &UserLevels::choose);
}

void UserLevels::choose(int level)
{
    const QString question = tr("Give the user at this window the rights of \"%1\"?\nDevices can "
                                "then be operated from it.")
                                 .arg(itemText(level));
    const bool raises = level > m_level;
    if (raises
        && QMessageBox::question(window(), tr("User level"), question,
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes) {
        setCurrentIndex(m_level);
        return;
    }
    m_level = level;
    setCurrentIndex(level);
    emit levelChanged(level);
}
