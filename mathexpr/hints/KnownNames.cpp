// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KnownNames.cpp - see KnownNames.h.
#include "mathexpr/hints/KnownNames.h"

#include "MTParserLib/names/MTNameIndex.h"
#include "mathexpr/hints/NameEntries.h"
#include "platform/FloatingPointGuard.h"

#include <utility>

namespace mathexpr {
namespace {

/// Calls the host with the host's own floating-point control words in force.
const wchar_t* nameFrom(const IMathExprNameSource& host, std::uint32_t index)
{
    const platform::HostFloatingPoint hostsWords;
    return host.getName(index);
}

}

const KnownNames::Offered& KnownNames::offered() const
{
    if (!answered)
    {
        Offered names;
        std::uint32_t index = 0;
        for (const wchar_t* name = nullptr; source != nullptr && (name = nameFrom(*source, index)) != nullptr; ++index)
        {
            names.inOrder.emplace_back(name);
            if (!names.all.insert(names.inOrder.back()).second)
            {
                names.inOrder.pop_back();
            }
        }
        answered = std::move(names);
    }
    return *answered;
}

const NameIndex* KnownNames::index() const
{
    return source == nullptr ? nullptr : source->getIndex();
}

std::vector<std::wstring> KnownNames::indexedMatching(std::wstring_view typed, std::size_t maxCount) const
{
    const NameIndex* const own = index();
    return own == nullptr ? std::vector<std::wstring>() : own->entries->matching(typed, maxCount);
}

std::vector<std::wstring> KnownNames::indexedNear(std::wstring_view name) const
{
    const NameIndex* const own = index();
    return own == nullptr ? std::vector<std::wstring>() : own->entries->neighboursOf(name);
}

const NameNotes* KnownNames::findIndexed(std::wstring_view name) const
{
    const NameIndex* const own = index();
    return own == nullptr ? nullptr : own->entries->find(name);
}

bool KnownNames::isNamedValue(std::wstring_view word) const
{
    return items.findConstant(word) != MTParserRegistrar::notFound || items.findVariableDefinition(word) != nullptr ||
           isHostName(word) || findIndexed(word) != nullptr;
}

bool KnownNames::isFunction(std::wstring_view word) const noexcept
{
    return items.findFunction(word) != MTParserRegistrar::notFound;
}

std::vector<std::uint32_t> KnownNames::argumentCounts(std::wstring_view function) const
{
    std::vector<std::uint32_t> counts;
    for (std::size_t index = items.findFunction(function); index != MTParserRegistrar::notFound;
         index = items.getFunctionDefinition(index).nextOverload)
    {
        counts.push_back(items.getFunctionDefinition(index).nbArgs);
    }
    return counts;
}

std::wstring_view KnownNames::constantIgnoringCase(std::wstring_view word) const
{
    for (std::size_t index = 0; index < items.getNbConstants(); ++index)
    {
        if (sameIgnoringCase(items.getConstantName(index), word))
        {
            return items.getConstantName(index);
        }
    }
    return {};
}

std::wstring_view KnownNames::functionIgnoringCase(std::wstring_view word) const
{
    for (std::size_t index = 0; index < items.getNbFunctions(); ++index)
    {
        if (sameIgnoringCase(items.getFunctionDefinition(index).symbol, word))
        {
            return items.getFunctionDefinition(index).symbol;
        }
    }
    return {};
}

bool KnownNames::lookupValue(const wchar_t* name, VALTYPE&) const
{
    return isNamedValue(name);
}

}
