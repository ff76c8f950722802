#include "host/acd/read_journal.h"

#include "base/red_book.h"

#include <algorithm>

namespace tonquay::host {

namespace {

constexpr std::uint8_t readMark = 1;
constexpr std::uint8_t failedMark = 2;
constexpr std::uint8_t repairedMark = 4;
constexpr std::uint8_t givenUpMark = 8;

void note(std::vector<std::int32_t>& seconds, std::int32_t second)
{
    if (seconds.empty() || seconds.back() != second)
        seconds.push_back(second);
}

}

ReadJournal::ReadJournal(SectorRun run) : run_(run), marks_(static_cast<std::size_t>(std::max(run.count, 0))) {}

void ReadJournal::wasRead(int first, int count)
{
    ++answers_;
    const int begin = std::max(first, run_.first);
    const int end = std::min(first + count, run_.end());
    const std::lock_guard lock(mutex_);
    for (int sector = begin; sector < end; ++sector)
        marks_[static_cast<std::size_t>(sector - run_.first)] |= readMark;
}

void ReadJournal::gaveNoData(int sector)
{
    ++answers_;
    mark(sector, failedMark);
}

void ReadJournal::wasRepaired(int sector)
{
    mark(sector, repairedMark);
}

void ReadJournal::wasGivenUp(int sector)
{
    mark(sector, givenUpMark);
}

void ReadJournal::wasSettled(int sector)
{
    if (!run_.has(sector))
        return;
    const std::lock_guard lock(mutex_);
    Marks& marks = marks_[static_cast<std::size_t>(sector - run_.first)];
    marks = static_cast<Marks>((marks & ~givenUpMark) | repairedMark);
}

bool ReadJournal::isGivenUp(int sector) const
{
    return (marksOf(sector) & givenUpMark) != 0;
}

bool ReadJournal::wasEverRead(int sector) const
{
    return (marksOf(sector) & readMark) != 0;
}

ReadJournal::Marks ReadJournal::marksOf(int sector) const
{
    if (!run_.has(sector))
        return 0;
    const std::lock_guard lock(mutex_);
    return marks_[static_cast<std::size_t>(sector - run_.first)];
}

void ReadJournal::mark(int sector, Marks marks)
{
    if (!run_.has(sector))
        return;
    const std::lock_guard lock(mutex_);
    marks_[static_cast<std::size_t>(sector - run_.first)] |= marks;
}

platform::ReadTroubles ReadJournal::troubles(int delivered, int origin) const
{
    platform::ReadTroubles troubles;
    const std::lock_guard lock(mutex_);
    for (int i = 0; i < std::min(delivered, run_.count); ++i) {
        const Marks marks = marks_[static_cast<std::size_t>(i)];
        const std::int32_t second = (run_.first + i - origin) / base::red_book::sectorsPerSecond;
        const bool wasRead = (marks & readMark) != 0;
        if ((marks & givenUpMark) != 0 || !wasRead)
            note(troubles.givenUp, second);
        else if ((marks & failedMark) != 0)
            note(troubles.reread, second);
        if ((marks & repairedMark) != 0)
            note(troubles.repaired, second);
    }
    return troubles;
}

}
