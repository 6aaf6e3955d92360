#pragma once

#include <unistd.h>
#include <utility>

namespace upssim {

/** A file descriptor that closes itself. */
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (valid())
            close(m_number);
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    int number() const { return m_number; }
    bool valid() const { return m_number >= 0; }

private:
    int m_number;
};

} // namespace upssim
