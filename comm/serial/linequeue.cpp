#include "serial/linequeue.h"

#include "exithold.h"
#include "stopsource.h"
#include "timeleft.h"

#include <algorithm>
#include <condition_variable>
#include <QMutex>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How long a wait goes on before it looks whether it is given up.
constexpr milliseconds slice { 20 };

/** When a wait is given up. */
class Limit
{
public:
    explicit Limit(LineQueue::Patience patience)
        : m_patience(patience)
    {
        if (patience == LineQueue::Patience::OfHost)
            m_deadline = steady_clock::now() + LineQueue::hostPatience;
    }

    bool isReached() const
    {
        return m_patience != LineQueue::Patience::Endless
            && (StopSource::currentRequested() || steady_clock::now() >= m_deadline);
    }

    /** How long to wait before the next look. */
    milliseconds nextSlice() const { return std::min(slice, timeLeft(m_deadline)); }

private:
    LineQueue::Patience m_patience;
    steady_clock::time_point m_deadline = steady_clock::time_point::max();
};

} // namespace

/** A place in the queue, which whoever leaves gives to the next. */
class LineQueue::Place
{
public:
    explicit Place(LineQueue &queue)
        : m_queue(queue)
    {
        const std::lock_guard<std::mutex> lock(m_queue.m_mutex);
        m_queue.m_places.push_back(this);
    }

    ~Place()
    {
        const std::lock_guard<std::mutex> lock(m_queue.m_mutex);
        std::vector<Place *> &places = m_queue.m_places;
        places.erase(std::find(places.begin(), places.end(), this));
        if (!places.empty())
            places.front()->m_moved.notify_one();
    }

    Place(const Place &) = delete;
    Place &operator=(const Place &) = delete;

    /** False when the limit came first. */
    bool waitToBeFirst(const Limit &limit)
    {
        std::unique_lock<std::mutex> lock(m_queue.m_mutex);
        const auto isFirst = [this] { return m_queue.m_places.front() == this; };
        while (!m_moved.wait_for(lock, limit.nextSlice(), isFirst)) {
            if (limit.isReached())
                return false;
        }
        return true;
    }

private:
    LineQueue &m_queue;
    std::condition_variable m_moved; // up in the queue
};

bool LineQueue::lock(QMutex &mutex, Patience patience)
{
    const ExitHold::Rest rest;
    const Limit limit(patience);
    // Left once the mutex is locked: only the first in the queue tries that.
    Place place(*this);
    if (!place.waitToBeFirst(limit))
        return false;
    while (!mutex.tryLock(int(std::max(limit.nextSlice(), milliseconds(0)).count()))) {
        if (limit.isReached())
            return false;
    }
    return true;
}
