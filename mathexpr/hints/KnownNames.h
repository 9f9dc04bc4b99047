// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// KnownNames.h - the names that a failed expression could have meant: the object's items and variables, and the names
// that the host offers for suggestions. The host's service is never called: a hint has no side effects.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/NameIndex.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace mathexpr {

class KnownNames final : public IMathExprService
{
public:
    /// @param nameSource  the host's; enumerated when the first of its names is needed; may be null
    KnownNames(const MTParserRegistrar& registrar, const IMathExprNameSource* nameSource) noexcept
        : items(registrar), source(nameSource)
    {}
    KnownNames(const KnownNames&) = delete;
    KnownNames& operator=(const KnownNames&) = delete;

    const MTParserRegistrar& registrar() const noexcept { return items; }

    /// In the host's order, without duplicates and without those of an index. References stay valid.
    /// @throws what the name source throws
    const std::deque<std::wstring>& hostNames() const { return offered().inOrder; }
    bool isHostName(std::wstring_view word) const { return offered().all.count(word) != 0; }

    /// Null if the host has none.
    const NameIndex* index() const;
    /// See NameEntries.h; without an index, empty and null.
    std::vector<std::wstring> indexedMatching(std::wstring_view typed, std::size_t maxCount) const;
    std::vector<std::wstring> indexedNear(std::wstring_view name) const;
    const NameNotes* findIndexed(std::wstring_view name) const;

    bool isNumber(std::wstring_view word) const noexcept { return items.isNumber(word); }
    /// Whether the word is the name of a constant, a variable, or a name that the host offers.
    bool isNamedValue(std::wstring_view word) const;
    bool isFunction(std::wstring_view word) const noexcept;

    /// Argument counts of a function's overloads; empty for any other word.
    std::vector<std::uint32_t> argumentCounts(std::wstring_view function) const;

    /// The constant or function whose name differs from the word only in case; empty if there is none.
    std::wstring_view constantIgnoringCase(std::wstring_view word) const;
    std::wstring_view functionIgnoringCase(std::wstring_view word) const;

    /// Acts as the host of a corrected text: knows the variables and the offered names.
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;

private:
    struct Offered
    {
        std::deque<std::wstring> inOrder;
        std::unordered_set<std::wstring_view> all;  // refers to inOrder
    };

    const Offered& offered() const;

    const MTParserRegistrar& items;
    const IMathExprNameSource* source;
    mutable std::optional<Offered> answered;
};

}
