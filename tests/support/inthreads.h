#pragma once

#include <thread>
#include <vector>

constexpr int threadCount = 4;

/** Calls `function` with 0 to threadCount - 1, each in a thread of its own, and waits for all. */
template <typename Function> void inThreads(Function function)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(function, i);
    for (std::thread &thread : threads)
        thread.join();
}
