#pragma once

/** What a scope leaves behind, however it is left: a return, an exception or the thread's
 *  cancellation. */
template <typename Action> class AtEnd
{
public:
    explicit AtEnd(const Action &action)
        : m_action(action)
    {
    }
    ~AtEnd() { m_action(); }
    AtEnd(const AtEnd &) = delete;
    AtEnd &operator=(const AtEnd &) = delete;

private:
    Action m_action;
};
