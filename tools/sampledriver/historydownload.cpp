#include "historydownload.h"

#include "modbusline.h"
#include "registermap.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace registermap;

namespace {

using Record = std::array<std::uint16_t, historyFields>;

constexpr char historyFile[] = "./history.txt";
constexpr int passes = 3; // the history may be cleared while it is read

struct Header
{
    std::uint16_t count;
    std::uint16_t generation;
};

// The records up to `count`, or fewer when the device failed or a page was not the one asked for:
// the pages have one length, so only the consecutive numbers tell a late page from the right one.
std::vector<Record> readRecords(ModbusLine &line, int count)
{
    std::vector<Record> records;
    std::uint16_t page[historyPage * historyFields];
    while (int(records.size()) < count) {
        const int first = int(records.size());
        const int taken = std::min(historyPage, count - first);
        if (line.read(4, historyBase + first * historyFields, taken * historyFields, page)
            != Outcome::Answered)
            break;
        for (int i = 0; i < taken; ++i) {
            Record record;
            std::copy_n(page + i * historyFields, historyFields, record.begin());
            if (!records.empty() && record[0] != std::uint16_t(records.back()[0] + 1))
                return records;
            records.push_back(record);
        }
    }
    return records;
}

bool write(std::FILE *file, const std::vector<Record> &records)
{
    for (const Record &record : records) {
        for (int field = 0; field < historyFields; ++field) {
            const char end = field == historyFields - 1 ? '\n' : ' ';
            if (std::fprintf(file, "%u%c", unsigned(record[std::size_t(field)]), end) < 0)
                return false;
        }
    }
    return fchmod(fileno(file), 0644) == 0;
}

// Another client of the process may be downloading too: each writes a file of its own and moves
// it into place when it is complete.
bool replaceFile(const std::vector<Record> &records)
{
    char name[] = "./history.txt.XXXXXX";
    const int descriptor = mkostemp(name, O_CLOEXEC);
    if (descriptor < 0)
        return false;
    std::FILE *const file = fdopen(descriptor, "w");
    if (!file) {
        close(descriptor);
        unlink(name);
        return false;
    }
    const bool written = write(file, records);
    if (std::fclose(file) == 0 && written && std::rename(name, historyFile) == 0)
        return true;
    unlink(name);
    return false;
}

} // namespace

bool downloadHistory(ModbusLine &line)
{
    for (int pass = 0; pass < passes; ++pass) {
        std::uint16_t before[2];
        std::uint16_t after[2];
        if (line.read(4, historyHeader, 2, before) != Outcome::Answered)
            return false;
        const Header header { before[0], before[1] };
        if (header.count > historyCapacity)
            return false;
        const std::vector<Record> records = readRecords(line, header.count);
        if (line.read(4, historyHeader, 2, after) != Outcome::Answered)
            return false;
        if (after[1] == header.generation && records.size() == header.count)
            return replaceFile(records);
    }
    return false;
}
