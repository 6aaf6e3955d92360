#pragma once

#include "answers/request.h"

#include <QObject>
#include <QVector>

/**
 * Follows what the user asks of the device, from the view's event to the proof in its reports.
 *
 * One line tells of it: the last request, unless an earlier one has come to a bad end since; that
 * stays until the next request.
 *
 * Threads:   GUI thread only.
 * Ownership: a child of the view; the settings are the view's.
 */
class RequestStatus : public QObject
{
    Q_OBJECT

public:
    RequestStatus(const Family &family, QObject *parent);

    /** Sets the records of the parameters that can be set. */
    void setSettings(const QList<ParameterInformation *> &settings) { m_settings = settings; }

    /** An event that the view posts, a request or not. */
    void follow(const QVariantMap &event);

    /** The client's answer to a command, the view's or another's. */
    void answer(const CommandAnswer &answer);

    /** A report of the device. */
    void takeReport(const DataReport &report);

    /** The upgrade that the user asked for goes on, or has ended. */
    void beginUpgrade();
    void endUpgrade(bool isGood);

    QString text() const { return m_text; }
    Tone tone() const { return m_tone; }

signals:
    void changed(const QString &text, Tone tone);

private:
    void miss(int number);
    void show(const Request &request);
    void tellUpgrade(const QString &state, Tone tone);
    void say(const QString &text, Tone tone);

    const Family &m_family;
    QList<ParameterInformation *> m_settings;
    QVector<Request> m_requests; // that something may still come of, oldest first
    int m_count = 0;
    Request m_shown;
    QString m_text;
    Tone m_tone = Tone::Plain;
};
