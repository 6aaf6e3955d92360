#pragma once

#include "commandanswer.h"
#include "historyoutcome.h"
#include "hostvocabulary.h"

#include <QDateTime>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QVector>

/** When an event began. */
struct EventOnset
{
    QDateTime since;
    bool isExact = true; ///< false: it was there before `since`, when the client first looked
};

/** How the link to the device is, and since when. */
struct LinkNews
{
    int state = HostContract::LinkUnknown;
    QDateTime since; ///< not valid until the link has been up or lost
};

/**
 * What a client tells its view beside the reports that the host passes on.
 *
 * Threads:   the client's polling thread tells, at any time; signals reach the view's thread as
 *            queued ones.
 * Ownership: the client's; it outlives the view.
 */
class ClientNews : public QObject
{
    Q_OBJECT

public:
    ClientNews();

    void eventBegan(int event, const EventOnset &onset);
    void eventEnded(int event);

    /** The events that are present, as the client saw them begin. */
    QMap<int, EventOnset> onsets() const;

    void setLink(const LinkNews &link);
    LinkNews link() const;

    /** Has commandAnswered() or historyExported() emitted, in the thread of this object. */
    void tell(const CommandAnswer &answer);
    void tell(const HistoryOutcome &outcome);

signals:
    /** The link was lost, or is up. */
    void linkChanged();

    /** A command was carried out, or was not, whoever asked for it. */
    void commandAnswered(const CommandAnswer &answer);

    /** A history download has ended. Its outcome is the file's; whether the device answered is told
     *  by the host's event. */
    void historyExported(const HistoryOutcome &outcome);

private:
    template <typename News> void keep(QVector<News> &waiting, const News &news, bool isAtOnce);
    void deliver();

    mutable QMutex m_mutex;
    QMap<int, EventOnset> m_onsets; // guarded by m_mutex
    LinkNews m_link;                // guarded by m_mutex
    // What is to be told. Here, as the texts in it are not to be shared by two threads.
    QVector<CommandAnswer> m_answers;   // guarded by m_mutex
    QVector<HistoryOutcome> m_outcomes; // guarded by m_mutex
    bool m_isCalled = false;            // deliver() is on its way; guarded by m_mutex
};
