#include "topbar.h"

#include "languages.h"
#include "userlevels.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace {
constexpr int chooserLetters = 16;
constexpr int languageLetters = 9; // some to spare: the style reckons the arrow too small
} // namespace

TopBar::TopBar(int userLevel, const QString &language, QWidget *parent)
    : QWidget(parent)
    , m_chooser(new QComboBox)
    , m_levels(new UserLevels(userLevel))
{
    auto *all = new QPushButton(tr("All de&vices"));
    all->setObjectName(QStringLiteral("allDevices"));
    all->setAutoDefault(false);
    connect(all, &QPushButton::clicked, this, &TopBar::allAsked);
    connect(m_levels, &UserLevels::levelChanged, this, &TopBar::userLevelChanged);
    createChooser();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(all);
    row->addWidget(m_chooser);
    row->addStretch(1);
    QComboBox *const boxes[] = { m_levels, createLanguages(language) };
    const QString labels[] = { tr("&User:"), tr("&Language:") };
    for (size_t i = 0; i < std::size(boxes); ++i) {
        auto *label = new QLabel(labels[i]);
        label->setBuddy(boxes[i]);
        row->addSpacing(8);
        row->addWidget(label);
        row->addWidget(boxes[i]);
    }
}

void TopBar::clearDevices()
{
    m_chooser->clear();
    m_chooser->setEnabled(false);
}

void TopBar::addDevice(const QString &name, DeviceStatus::Level level)
{
    m_chooser->addItem(DeviceStatus::icon(level, palette()), name, name);
    m_chooser->setEnabled(true);
}

void TopBar::setLevel(const QString &name, DeviceStatus::Level level)
{
    m_chooser->setItemIcon(m_chooser->findData(name), DeviceStatus::icon(level, palette()));
}

void TopBar::setCurrent(const QString &name)
{
    m_chooser->setCurrentIndex(name.isEmpty() ? -1 : m_chooser->findData(name));
}

QString TopBar::current() const
{
    return m_chooser->currentData().toString();
}

void TopBar::createChooser()
{
    m_chooser->setObjectName(QStringLiteral("deviceChooser"));
    m_chooser->setAccessibleName(tr("Device"));
    m_chooser->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_chooser->setMinimumContentsLength(chooserLetters);
    m_chooser->setPlaceholderText(tr("Open a device"));
    QPalette colors = m_chooser->palette();
    colors.setColor(QPalette::PlaceholderText, colors.color(QPalette::ButtonText));
    m_chooser->setPalette(colors);
    connect(m_chooser, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { emit deviceAsked(m_chooser->itemData(index).toString()); });
}

QComboBox *TopBar::createLanguages(const QString &language)
{
    auto *box = new QComboBox;
    box->setObjectName(QStringLiteral("language"));
    box->setMinimumContentsLength(languageLetters);
    for (const HostLanguage &row : hostLanguages)
        box->addItem(QString::fromUtf8(row.name), QString::fromLatin1(row.code));
    box->setCurrentIndex(box->findData(language));
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box, language](int index) {
        const QString code = box->itemData(index).toString();
        if (code != language)
            emit languageChosen(code);
    });
    return box;
}
