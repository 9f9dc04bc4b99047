// MTParserProgram.cpp - the memory of a program, and its passage from being compiled to being evaluated.
#include "MTParserLib/MTParserProgram.h"

#include <algorithm>

namespace {

constexpr std::size_t smallestChunk = 16;

}

VALTYPE* MTSlotArena::allocate(std::size_t count)
{
    if (count == 0)
    {
        return nullptr;
    }
    Mark place = top;
    while (place.chunk < chunks.size() && chunks[place.chunk].size - place.used < count)
    {
        ++place.chunk;
        place.used = 0;
    }
    if (place.chunk == chunks.size())
    {
        const std::size_t doubled = chunks.empty() ? smallestChunk : 2 * chunks.back().size;
        const std::size_t size = std::max(count, doubled);
        chunks.push_back(Chunk{std::make_unique<VALTYPE[]>(size), size});
    }
    VALTYPE* allocated = chunks[place.chunk].slots.get() + place.used;
    std::fill_n(allocated, count, VALTYPE{});
    top = Mark{place.chunk, place.used + count};
    return allocated;
}

void MTParserProgram::clear() noexcept
{
    records.clear();
    slots.release({});
    complete = false;
}

void MTParserProgram::finish() noexcept
{
    const auto remove = [this](MTProgramRecord::Kind kind, std::ptrdiff_t kept) {
        const auto end = records.end() - kept;
        const auto isOfKind = [kind](const MTProgramRecord& record) { return record.kind == kind; };
        records.erase(std::remove_if(records.begin(), end, isOfKind), end);
    };
    remove(MTProgramRecord::Kind::Placeholder, 0);
    // The root stays even where it is a constant: it is then the value of the whole expression.
    remove(MTProgramRecord::Kind::Constant, records.empty() ? 0 : 1);
    for (MTProgramRecord& record : records)
    {
        if (record.destination == nullptr)
        {
            record.destination = &record.value;
        }
    }
    complete = !records.empty();
}
