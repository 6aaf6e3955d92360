#pragma once

#include "devicestatus.h"

#include <QWidget>

class QComboBox;
class UserLevels;

/** The bar above the page: which device, who, and in which language. GUI thread only. */
class TopBar : public QWidget
{
    Q_OBJECT

public:
    /** @param language  code of the language that is shown */
    TopBar(int userLevel, const QString &language, QWidget *parent = nullptr);

    void clearDevices();
    void addDevice(const QString &name, DeviceStatus::Level level);
    void setLevel(const QString &name, DeviceStatus::Level level);

    /** Shows which device is open; empty: none. */
    void setCurrent(const QString &name);
    QString current() const;

    const UserLevels &user() const { return *m_levels; }

signals:
    void allAsked();
    void deviceAsked(const QString &name);
    void userLevelChanged();
    void languageChosen(const QString &code);

private:
    void createChooser();
    QComboBox *createLanguages(const QString &language);

    QComboBox *m_chooser;
    UserLevels *m_levels;
};
