#pragma once

#include <QComboBox>

/** The choice of the user's level; raising it asks. GUI thread only. */
class UserLevels : public QComboBox
{
    Q_OBJECT

public:
    explicit UserLevels(int level, QWidget *parent = nullptr);

    int level() const { return m_level; }
    QString userName() const { return itemText(m_level); }

    /** May only look. */
    static constexpr int observer = 0;

signals:
    void levelChanged(int level);

private:
    void choose(int level);

    int m_level;
};
