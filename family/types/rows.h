#pragma once

#include <cstddef>

/** A constexpr table as its readers see it: its rows in their order. Owns nothing. */
template <typename Row> class Rows
{
public:
    constexpr Rows() = default;
    template <std::size_t Count>
    constexpr Rows(const Row (&rows)[Count]) // a table stands for its rows
        : m_first(rows)
        , m_count(Count)
    {
    }

    constexpr const Row *begin() const { return m_first; }
    constexpr const Row *end() const { return m_first + m_count; }
    constexpr int size() const { return static_cast<int>(m_count); }
    constexpr bool isEmpty() const { return m_count == 0; }
    constexpr const Row &operator[](int index) const { return m_first[index]; }

private:
    const Row *m_first = nullptr;
    std::size_t m_count = 0;
};
