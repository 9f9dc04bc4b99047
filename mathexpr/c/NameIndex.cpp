// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameIndex.cpp - implements the name indexes of mathexpr_editor.h. An expression shares ownership of its index, so the
// two handles may be destroyed in any order.
#include "mathexpr/NameIndex.h"

#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"

#include <memory>
#include <utility>

struct mathexpr_name_index
{
#if defined(MATHEXPR_CHECK_HANDLES)
    // NOLINTNEXTLINE(cert-dcl54-cpp): the global operator new allocates, and its counterpart frees in the end
    static void operator delete(void* memory) noexcept
    {
        HandleRegistry::retire(memory);
    }
#endif

    const std::shared_ptr<mathexpr::NameIndex> names = std::make_shared<mathexpr::NameIndex>();
};

namespace {

template <class Work>
mathexpr_status withIndex(const mathexpr_name_index* handle, Work work) noexcept
{
    if (handle == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    return HandleRegistry::isLive(handle) ? atBoundary(work) : MATHEXPR_STALE_HANDLE;
}

template <class Encoding>
mathexpr_status addName(mathexpr_name_index* index, const typename Encoding::Unit* name, std::size_t length,
                        const typename Encoding::NameNotes* given) noexcept
{
    return withIndex(index, [=]() -> mathexpr_status {
        typename Encoding::NameNotes known{};
        if (given != nullptr && !readStructure(given, known))
        {
            return MATHEXPR_BAD_SIZE;
        }
        std::wstring wide;
        mathexpr::NameNotes notes;
        mathexpr_status status = takeText<Encoding>(name, length, wide);
        status = status == MATHEXPR_OK ? takeNotes<Encoding>(known, notes) : status;
        if (status == MATHEXPR_OK)
        {
            index->names->add(wide.c_str(), notes);
        }
        return status;
    });
}

template <class Encoding>
mathexpr_status removeName(mathexpr_name_index* index, const typename Encoding::Unit* name, std::size_t length) noexcept
{
    return withIndex(index, [=]() -> mathexpr_status {
        std::wstring wide;
        const mathexpr_status status = takeText<Encoding>(name, length, wide);
        if (status != MATHEXPR_OK)
        {
            return status;
        }
        return index->names->remove(wide.c_str()) ? MATHEXPR_OK : MATHEXPR_NOT_FOUND;
    });
}

}

mathexpr_status mathexpr_create_name_index(mathexpr_name_index** index) noexcept
{
    if (index == nullptr)
    {
        return MATHEXPR_NULL_ARGUMENT;
    }
    return atBoundary([=] {
        auto made = std::make_unique<mathexpr_name_index>();
        HandleRegistry::add(made.get());
        *index = made.release();
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_destroy_name_index(mathexpr_name_index* index) noexcept
{
    if (index == nullptr)
    {
        return MATHEXPR_OK;
    }
    return withIndex(index, [=] {
        delete index;
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_add_indexed_name_utf8(mathexpr_name_index* index, const char* name, size_t length,
                                               const mathexpr_name_notes_utf8* notes) noexcept
{
    return addName<Utf8>(index, name, length, notes);
}

mathexpr_status mathexpr_add_indexed_name_utf16(mathexpr_name_index* index, const mathexpr_char16* name, size_t length,
                                                const mathexpr_name_notes_utf16* notes) noexcept
{
    return addName<Utf16>(index, name, length, notes);
}

mathexpr_status mathexpr_remove_indexed_name_utf8(mathexpr_name_index* index, const char* name, size_t length) noexcept
{
    return removeName<Utf8>(index, name, length);
}

mathexpr_status mathexpr_remove_indexed_name_utf16(mathexpr_name_index* index, const mathexpr_char16* name,
                                                   size_t length) noexcept
{
    return removeName<Utf16>(index, name, length);
}

mathexpr_status mathexpr_set_name_index(mathexpr_expression* expression, const mathexpr_name_index* index) noexcept
{
    return changeExpression(expression, [=](mathexpr_expression& changed) -> mathexpr_status {
        if (index != nullptr && !HandleRegistry::isLive(index))
        {
            return MATHEXPR_STALE_HANDLE;
        }
        changed.host->nameIndex = index == nullptr ? nullptr : index->names;
        offerNames(changed.object(), *changed.host);
        return MATHEXPR_OK;
    });
}
