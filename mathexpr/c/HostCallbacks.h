// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostCallbacks.h - adapts the callbacks of a C host to the library's C++ interfaces.
//
// Exceptions of a callback are caught here; a HostCallbackFailure replaces them and ends the pending call.
#pragma once

#include "mathexpr/Completion.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/NameIndex.h"
#include "mathexpr/c/Encoding.h"

#include <mathexpr.h>

#include <memory>
#include <string>

/// Thrown from a callback through the library to the boundary.
struct HostCallbackFailure
{
    mathexpr_status status;
};

/// Sets a flag while it exists.
class Mark
{
public:
    explicit Mark(bool& flag) noexcept : marked(flag) { marked = true; }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;
    ~Mark() { marked = false; }

private:
    bool& marked;
};

/// The callbacks of an expression, shared with its copies, and flags for calls in progress.
class HostCallbacks : public IMathExprService, public mathexpr::IMathExprNameSource
{
public:
    HostCallbacks() = default;
    HostCallbacks(const HostCallbacks&) = delete;
    HostCallbacks& operator=(const HostCallbacks&) = delete;
    ~HostCallbacks() override = default;

    virtual bool answersNames() const noexcept = 0;
    virtual bool offersNames() const noexcept = 0;

    const mathexpr::NameIndex* getIndex() const override { return nameIndex.get(); }

    /// Without a function if the host does not show messages itself.
    const mathexpr::ProcessMessageDisplay& display() const noexcept { return messageDisplay; }

    std::shared_ptr<const mathexpr::NameIndex> nameIndex;
    bool isCalled = false;         ///< A call that changes or runs the expression is in progress.
    bool isAskedForNames = false;  ///< A call that builds a diagnostic is in progress.

protected:
    mathexpr::ProcessMessageDisplay messageDisplay;
};

template <class Encoding>
class EncodedHostCallbacks final : public HostCallbacks
{
public:
    explicit EncodedHostCallbacks(const typename Encoding::Options& options) noexcept;

    bool answersNames() const noexcept override { return options.lookup != nullptr; }
    bool offersNames() const noexcept override { return options.get_name != nullptr || nameIndex != nullptr; }

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override;
    const wchar_t* getName(std::uint32_t index) const override;

private:
    static void show(void* self, std::uint32_t id, const wchar_t* text);

    const typename Encoding::Options options;
    mutable std::wstring offeredName;
};

/// @return MATHEXPR_OK, MATHEXPR_BAD_OPTION for an unlisted kind, or a status of takeText
template <class Encoding>
mathexpr_status takeNotes(const typename Encoding::NameNotes& given, mathexpr::NameNotes& taken);

/// The callback for notes on names, during one call.
template <class Encoding>
class EncodedNameNotes final : public mathexpr::IMathExprNameNotes
{
public:
    EncodedNameNotes(typename Encoding::GetNameNotes ask, void* givenContext) noexcept
        : getNotesOf(ask), context(givenContext)
    {}

    mathexpr::NameNotes getNotes(const wchar_t* name) const override;

private:
    const typename Encoding::GetNameNotes getNotesOf;
    void* const context;
};

extern template class EncodedHostCallbacks<Utf8>;
extern template class EncodedHostCallbacks<Utf16>;
extern template class EncodedNameNotes<Utf8>;
extern template class EncodedNameNotes<Utf16>;
