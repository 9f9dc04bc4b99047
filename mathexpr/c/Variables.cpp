// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Variables.cpp - implements the variables of mathexpr.h.
#include "mathexpr/Variables.h"

#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"
#include "mathexpr/c/Values.h"

namespace {

/// Converts the name, and calls work with the expression object and the name.
template <class Encoding, class Work>
mathexpr_status withName(mathexpr_expression& expression, const typename Encoding::Unit* name, std::size_t length,
                         Work work)
{
    std::wstring wide;
    const mathexpr_status status = takeText<Encoding>(name, length, wide);
    if (status != MATHEXPR_OK)
    {
        return status;
    }
    return work(expression.object(), wide.c_str());
}

std::vector<std::wstring> namesOf(const MathExpression& object, std::uint32_t which)
{
    switch (which)
    {
    case MATHEXPR_NAMES_USED:
        return mathexpr::getUsedNames(object);
    case MATHEXPR_NAMES_DEFINED:
        return mathexpr::getVariableNames(object);
    default:
        return mathexpr::getHostNames(object);
    }
}

template <class Encoding>
mathexpr_status getNames(mathexpr_expression* handle, std::uint32_t which, typename Encoding::Names* names) noexcept
{
    return readExpression(handle, [=](mathexpr_expression& expression) {
        if (names == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (which > MATHEXPR_NAMES_OF_HOST)
        {
            return MATHEXPR_BAD_OPTION;
        }
        if (!hasPlausibleSize(names))
        {
            return MATHEXPR_BAD_SIZE;
        }
        auto list = std::make_unique<const TextList<Encoding>>(namesOf(expression.object(), which));
        typename Encoding::Names known{};
        known.names = list->data();
        known.name_count = list->size();
        writeStructure(known, names);
        expression.template answers<Encoding>().names = std::move(list);
        return MATHEXPR_OK;
    });
}

template <class Encoding>
mathexpr_status getVariable(const mathexpr_expression* handle, const typename Encoding::Unit* name, std::size_t length,
                            mathexpr_value* value) noexcept
{
    return readExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (value == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        return withName<Encoding>(expression, name, length, [value](MathExpression& object, const wchar_t* wide) {
            return mathexpr::getVariable(object, wide, inPlace(*value)) ? MATHEXPR_OK : MATHEXPR_NOT_FOUND;
        });
    });
}

/// Finds the invalid part of a name.
template <class Encoding>
mathexpr_name_refusal refusalOf(const SMTDefExcepData& data)
{
    const std::wstring_view name = data.itemName;
    std::size_t begin = data.conflictItemName.empty() ? std::wstring_view::npos : name.find(data.conflictItemName);
    std::size_t size = data.conflictItemName.size();
    if (begin == std::wstring_view::npos)
    {
        begin = 0;
        size = name.size();
    }
    mathexpr_name_refusal refusal{};
    refusal.code = data.exID;
    refusal.start = Encoding::encode(name.substr(0, begin)).size();
    refusal.length = Encoding::encode(name.substr(begin, size)).size();
    return refusal;
}

template <class Encoding>
mathexpr_status setVariable(mathexpr_expression* handle, const typename Encoding::Unit* name, std::size_t length,
                            const mathexpr_value* value, mathexpr_name_refusal* refusal) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (value == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!isNumberOrPoint(*value))
        {
            return MATHEXPR_BAD_VALUE;
        }
        if (refusal != nullptr && !hasPlausibleSize(refusal))
        {
            return MATHEXPR_BAD_SIZE;
        }
        return withName<Encoding>(expression, name, length, [=](MathExpression& object, const wchar_t* wide) {
            try
            {
                return mathexpr::setVariable(object, wide, toLibrary(*value)) ? MATHEXPR_OK : MATHEXPR_BUSY;
            }
            catch (const mathexpr::DefinitionException& exception)
            {
                if (refusal != nullptr)
                {
                    writeStructure(refusalOf<Encoding>(exception.entries.front().data), refusal);
                }
                return MATHEXPR_DEFINITION_ERROR;
            }
        });
    });
}

template <class Encoding>
mathexpr_status removeVariable(mathexpr_expression* handle, const typename Encoding::Unit* name,
                               std::size_t length) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) {
        return withName<Encoding>(expression, name, length, [](MathExpression& object, const wchar_t* wide) {
            return mathexpr::removeVariable(object, wide) ? MATHEXPR_OK : MATHEXPR_NOT_FOUND;
        });
    });
}

template <class Encoding>
mathexpr_status getAddress(mathexpr_expression* handle, const typename Encoding::Unit* name, std::size_t length,
                           mathexpr_value** address) noexcept
{
    return readExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (address == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        return withName<Encoding>(expression, name, length, [address](MathExpression& object, const wchar_t* wide) {
            VALTYPE* const held = mathexpr::getVariableAddress(object, wide);
            if (held == nullptr)
            {
                return MATHEXPR_NOT_FOUND;
            }
            *address = &inPlace(*held);
            return MATHEXPR_OK;
        });
    });
}

}

mathexpr_status mathexpr_get_names_utf8(mathexpr_expression* expression, uint32_t which,
                                        mathexpr_names_utf8* names) noexcept
{
    return getNames<Utf8>(expression, which, names);
}

mathexpr_status mathexpr_get_names_utf16(mathexpr_expression* expression, uint32_t which,
                                         mathexpr_names_utf16* names) noexcept
{
    return getNames<Utf16>(expression, which, names);
}

mathexpr_status mathexpr_get_variable_utf8(const mathexpr_expression* expression, const char* name, size_t length,
                                           mathexpr_value* value) noexcept
{
    return getVariable<Utf8>(expression, name, length, value);
}

mathexpr_status mathexpr_get_variable_utf16(const mathexpr_expression* expression, const mathexpr_char16* name,
                                            size_t length, mathexpr_value* value) noexcept
{
    return getVariable<Utf16>(expression, name, length, value);
}

mathexpr_status mathexpr_set_variable_utf8(mathexpr_expression* expression, const char* name, size_t length,
                                           const mathexpr_value* value, mathexpr_name_refusal* refusal) noexcept
{
    return setVariable<Utf8>(expression, name, length, value, refusal);
}

mathexpr_status mathexpr_set_variable_utf16(mathexpr_expression* expression, const mathexpr_char16* name, size_t length,
                                            const mathexpr_value* value, mathexpr_name_refusal* refusal) noexcept
{
    return setVariable<Utf16>(expression, name, length, value, refusal);
}

mathexpr_status mathexpr_remove_variable_utf8(mathexpr_expression* expression, const char* name, size_t length) noexcept
{
    return removeVariable<Utf8>(expression, name, length);
}

mathexpr_status mathexpr_remove_variable_utf16(mathexpr_expression* expression, const mathexpr_char16* name,
                                               size_t length) noexcept
{
    return removeVariable<Utf16>(expression, name, length);
}

mathexpr_status mathexpr_get_variable_address_utf8(mathexpr_expression* expression, const char* name, size_t length,
                                                   mathexpr_value** address) noexcept
{
    return getAddress<Utf8>(expression, name, length, address);
}

mathexpr_status mathexpr_get_variable_address_utf16(mathexpr_expression* expression, const mathexpr_char16* name,
                                                    size_t length, mathexpr_value** address) noexcept
{
    return getAddress<Utf16>(expression, name, length, address);
}
