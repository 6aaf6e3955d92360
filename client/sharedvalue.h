#pragma once

/** Writes a plain member of the host's base class that other threads read at any time. */
template <typename Value> void setShared(Value &member, Value value)
{
    __atomic_store_n(&member, value, __ATOMIC_RELEASE);
}

/** Reads such a member. */
template <typename Value> Value shared(const Value &member)
{
    return __atomic_load_n(&member, __ATOMIC_ACQUIRE);
}
