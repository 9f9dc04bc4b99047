// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostCallbacks.cpp - see HostCallbacks.h.
#include "mathexpr/c/HostCallbacks.h"

#include "mathexpr/HostBoundary.h"
#include "mathexpr/ThreadMessageDisplay.h"
#include "mathexpr/c/Values.h"

namespace {

/// Calls the host. Other objects that the callback uses do not show messages in the display of this expression.
template <class Call>
auto callHost(Call call)
{
    const ThreadMessageDisplay processes(nullptr);
    const ExceptionCount exceptions;
    try
    {
        return call();
    }
    catch (...)
    {
        exceptions.restore();
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_THREW};
    }
}

}

template <class Encoding>
EncodedHostCallbacks<Encoding>::EncodedHostCallbacks(const typename Encoding::Options& given) noexcept : options(given)
{
    if (options.show_message != nullptr)
    {
        messageDisplay.context = this;
        // cppcheck-suppress throwInNoexceptFunction ; it is not called here
        messageDisplay.show = &EncodedHostCallbacks::show;
    }
}

template <class Encoding>
bool EncodedHostCallbacks<Encoding>::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    const typename Encoding::Text text = Encoding::encode(name);
    mathexpr_value answer{};
    const std::int32_t known =
        callHost([&] { return options.lookup(options.context, text.c_str(), text.size(), &answer); });
    if (known == MATHEXPR_LOOKUP_REFUSED)
    {
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_REFUSED};
    }
    if (known != MATHEXPR_LOOKUP_NOT_KNOWN && (known != MATHEXPR_LOOKUP_FOUND || !isNumberOrPoint(answer)))
    {
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_BAD_ANSWER};
    }
    if (known == MATHEXPR_LOOKUP_FOUND)
    {
        value = toLibrary(answer);
    }
    return known == MATHEXPR_LOOKUP_FOUND;
}

template <class Encoding>
const wchar_t* EncodedHostCallbacks<Encoding>::getName(std::uint32_t index) const
{
    if (options.get_name == nullptr)
    {
        return nullptr;  // if the host has only an index
    }
    const typename Encoding::Unit* const name = callHost([&] { return options.get_name(options.context, index); });
    if (name == nullptr)
    {
        return nullptr;
    }
    if (takeText<Encoding>(name, MATHEXPR_ZERO_TERMINATED, offeredName) != MATHEXPR_OK)
    {
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_BAD_ANSWER};
    }
    return offeredName.c_str();
}

template <class Encoding>
void EncodedHostCallbacks<Encoding>::show(void* self, std::uint32_t id, const wchar_t* wide)
{
    const auto& host = static_cast<const EncodedHostCallbacks*>(self)->options;
    const typename Encoding::Text text = Encoding::encode(wide);
    callHost([&] { host.show_message(host.context, id, text.c_str(), text.size()); });
}

template <class Encoding>
mathexpr::NameNotes EncodedNameNotes<Encoding>::getNotes(const wchar_t* wide) const
{
    const typename Encoding::Text name = Encoding::encode(wide);
    typename Encoding::NameNotes answer{};
    answer.size = sizeof(answer);
    const std::int32_t known = callHost([&] { return getNotesOf(context, name.c_str(), name.size(), &answer); });
    if (known == MATHEXPR_LOOKUP_REFUSED)
    {
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_REFUSED};
    }
    mathexpr::NameNotes notes;
    if (known != MATHEXPR_LOOKUP_NOT_KNOWN &&
        (known != MATHEXPR_LOOKUP_FOUND || takeNotes<Encoding>(answer, notes) != MATHEXPR_OK))
    {
        throw HostCallbackFailure{MATHEXPR_HOST_CALLBACK_BAD_ANSWER};
    }
    return notes;
}

template <class Encoding>
mathexpr_status takeNotes(const typename Encoding::NameNotes& given, mathexpr::NameNotes& taken)
{
    if (given.value_kind > MATHEXPR_VALUE_EITHER)
    {
        return MATHEXPR_BAD_OPTION;
    }
    taken.kind = static_cast<mathexpr::ValueKind>(given.value_kind);
    const auto take = [](const typename Encoding::Unit* text, std::wstring& own) {
        return text == nullptr ? MATHEXPR_OK : takeText<Encoding>(text, MATHEXPR_ZERO_TERMINATED, own);
    };
    const mathexpr_status status = take(given.description, taken.description);
    return status == MATHEXPR_OK ? take(given.unavailable, taken.unavailable) : status;
}

template mathexpr_status takeNotes<Utf8>(const mathexpr_name_notes_utf8& given, mathexpr::NameNotes& taken);
template mathexpr_status takeNotes<Utf16>(const mathexpr_name_notes_utf16& given, mathexpr::NameNotes& taken);
template class EncodedHostCallbacks<Utf8>;
template class EncodedHostCallbacks<Utf16>;
template class EncodedNameNotes<Utf8>;
template class EncodedNameNotes<Utf16>;
