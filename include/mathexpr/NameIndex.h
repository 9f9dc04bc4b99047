// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameIndex.h - a sorted index of names, for models too large to enumerate at every keystroke.
//
//     mathexpr::NameIndex names;
//     for (const Parameter& each : model)
//         names.add(each.name, {mathexpr::ValueKind::Number, each.comment, L""});
//     mathexpr::setNameSource(expression, &names);
#pragma once

#include "mathexpr/Completion.h"
#include "mathexpr/Export.h"
#include "mathexpr/HostRuntime.h"
#include "mathexpr/IMathExprNameSource.h"

#include <cstdint>
#include <memory>

namespace mathexpr {

class NameEntries;

/// A name source that the library searches instead of enumerating it. Several expressions may share an index; the index
/// and these expressions are used by one thread at a time.
///
/// Completion considers all recently chosen names that match the typed word, and the first other matches in alphabetical
/// order, as many as it may return, but at least 256. Descriptions are not searched. A misspelt name is compared with its
/// 400 neighbours in alphabetical order.
class MATHEXPR_API NameIndex final : public IMathExprNameSource
{
public:
    explicit NameIndex(const HostRuntime& runtime = HostRuntime());
    ~NameIndex() override;
    NameIndex(const NameIndex&) = delete;
    NameIndex& operator=(const NameIndex&) = delete;

    /// Adds a name, or replaces its notes.
    /// @param name   as passed to IMathExprService::lookupValue; null and the empty name have no effect
    /// @param notes  completion shows them unless CompletionOptions::notes supplies others
    /// @throws std::bad_alloc; the call may be repeated
    void add(const wchar_t* name, const NameNotes& notes = NameNotes());

    /// @return whether the index held the name
    bool remove(const wchar_t* name);

    /// Always null: the library searches the index instead.
    const wchar_t* getName(std::uint32_t index) const override;
    const NameIndex* getIndex() const override { return this; }

private:
    friend class KnownNames;

    const HostRuntime host;
    const std::unique_ptr<NameEntries> entries;
};

}
