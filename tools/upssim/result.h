#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace upssim {

/** Why something was not done, for whoever asked. */
struct Failure
{
    QString text;
};

/** What there is to tell when something was simply done. */
struct Done
{
};

/** A value, or the reason why there is none. */
template <typename Value> class [[nodiscard]] Result
{
public:
    Result(Value value)
        : m_content(std::move(value))
    {
    }
    Result(Failure failure)
        : m_content(std::move(failure))
    {
    }

    explicit operator bool() const { return std::holds_alternative<Value>(m_content); }
    const Value &operator*() const { return std::get<Value>(m_content); }
    const Value *operator->() const { return &std::get<Value>(m_content); }
    /** Empty when there is a value. */
    QString error() const { return *this ? QString() : std::get<Failure>(m_content).text; }

private:
    std::variant<Value, Failure> m_content;
};

} // namespace upssim
