#pragma once

#include "tavoclient.h"

#include <memory>
#include <vector>

/** Clients on a pseudo-terminal each, with the driver of benchdriver.cpp. */
class BenchClients
{
public:
    explicit BenchClients(int count);
    ~BenchClients();
    BenchClients(const BenchClients &) = delete;
    BenchClients &operator=(const BenchClients &) = delete;

    /** Gives all clients to the event loop for deletion. */
    void deleteLater();

    const std::vector<std::unique_ptr<tavoClient>> &all() const { return m_clients; }

private:
    std::vector<int> m_masters;
    std::vector<std::unique_ptr<tavoClient>> m_clients;
};

/** Queries that the driver has answered so far. */
long benchQueries();

/** Lets the driver's queries not return, until it is taken back. */
void benchHang(bool on);

/** A line of /proc/self/status such as "VmRSS" or "VmHWM", in KiB. */
double memoryKiB(const char *key);
