#pragma once

#include <QObject>
#include <QVector>

#include <functional>

class QPixmap;
class QWidget;

/** A picture of the window with the dialogs that are open over it. */
QPixmap grabWithDialogs(QWidget &window);

/**
 * Goes through what a view asks and answers, as a user would: the dialog of a setting, a question, a
 * download of the history; for pictures.
 *
 * Threads: GUI thread only.
 */
class DialogScenes : public QObject
{
    Q_OBJECT

public:
    /** @param view  of a device that answers and may be controlled */
    explicit DialogScenes(QWidget &view, const QString &historyFile, QObject *parent = nullptr);

    void start();

signals:
    /** A scene has come up; the next follows when the slots have returned. */
    void shown(const QString &name);
    void finished();

private:
    struct Step
    {
        std::function<void()> act;
        int settleMs;
        const char *name;            ///< of what is seen then; empty: nothing new
        bool isBehindDialog = false; ///< seen once no dialog covers it
    };

    void next();
    void show(const Step &step);
    void editSetting();
    void click(const char *button);
    void chooseFile();

    QWidget &m_view;
    QString m_historyFile;
    QVector<Step> m_steps;
};
