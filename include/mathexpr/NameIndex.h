// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameIndex.h - the names of a large model, ordered once so that no keystroke has to walk through all of them.
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

/// A name source that is asked for single names instead of all. Several expressions may share one. It is used by one
/// thread at a time, together with them.
///
/// Of the names that match what has been typed, completion considers those that were chosen lately and as many others as
/// it may offer, at least 256, in alphabetical order. A misspelt name is compared with its 400 neighbours in that order.
/// What has been typed is not matched with descriptions.
class MATHEXPR_API NameIndex final : public IMathExprNameSource
{
public:
    explicit NameIndex(const HostRuntime& runtime = HostRuntime());
    ~NameIndex() override;
    NameIndex(const NameIndex&) = delete;
    NameIndex& operator=(const NameIndex&) = delete;

    /// Adds a name, or replaces what is known of it.
    /// @param name   as IMathExprService::lookupValue is asked for it; null and the empty name have no effect
    /// @param notes  completion shows them, unless CompletionOptions::notes tells others
    /// @throws std::bad_alloc; the call may be repeated
    void add(const wchar_t* name, const NameNotes& notes = NameNotes());

    /// @return whether there was such a name
    bool remove(const wchar_t* name);

    /// None: the library looks its names up.
    const wchar_t* getName(std::uint32_t index) const override;
    const NameIndex* getIndex() const override { return this; }

private:
    friend class KnownNames;

    const HostRuntime host;
    const std::unique_ptr<NameEntries> entries;
};

}
