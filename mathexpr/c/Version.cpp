// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Version.cpp - implements the version and status texts of mathexpr.h. The build defines the version.
#include <mathexpr.h>

const char* mathexpr_status_text(mathexpr_status status) noexcept
{
    switch (status)
    {
    case MATHEXPR_OK:
        return "no failure";
    case MATHEXPR_NULL_ARGUMENT:
        return "a pointer that is needed is NULL";
    case MATHEXPR_STALE_HANDLE:
        return "the expression was destroyed, or never made";
    case MATHEXPR_WRONG_KIND:
        return "the function is for the other kind of expression";
    case MATHEXPR_BUSY:
        return "a call on the expression waits for the host";
    case MATHEXPR_BAD_UTF8:
        return "the text is not well-formed UTF-8";
    case MATHEXPR_BAD_UTF16:
        return "the text is not well-formed UTF-16";
    case MATHEXPR_ZERO_IN_TEXT:
        return "there is a zero in the text";
    case MATHEXPR_BAD_SIZE:
        return "no version of the structure has this size, or it holds what this version does not know";
    case MATHEXPR_BAD_VALUE:
        return "the value is neither a number nor a point";
    case MATHEXPR_BAD_OPTION:
        return "an option is none of those that there are";
    case MATHEXPR_NOT_FOUND:
        return "there is no such variable or index";
    case MATHEXPR_BULK_REFUSED:
        return "the arrays cannot be used";
    case MATHEXPR_BUFFER_TOO_SMALL:
        return "the buffer is too small for the text";
    case MATHEXPR_PARSING_ERROR:
        return "the text does not compile, or a function got a point for a number";
    case MATHEXPR_DEFINITION_ERROR:
        return "the name cannot be a variable";
    case MATHEXPR_REFUSED:
        return "an item refused its arguments, or an integer is too large";
    case MATHEXPR_NO_PROGRAM:
        return "there is nothing to evaluate";
    case MATHEXPR_OTHER_KIND:
        return "the value is a point where a number is needed, or a number where a point is";
    case MATHEXPR_HOST_CALLBACK_THREW:
        return "a callback of the host ended by an exception";
    case MATHEXPR_HOST_CALLBACK_REFUSED:
        return "a callback of the host gave the call up";
    case MATHEXPR_HOST_CALLBACK_BAD_ANSWER:
        return "a callback of the host answered what it may not";
    case MATHEXPR_OUT_OF_MEMORY:
        return "there is not enough memory";
    case MATHEXPR_INTERNAL_ERROR:
        return "there is a fault in the library";
    default:
        return "unknown status";
    }
}

uint32_t mathexpr_version_number(void) noexcept
{
    return MATHEXPR_VERSION_NUMBER;
}

const char* mathexpr_version_text(void) noexcept
{
    return MATHEXPR_VERSION_TEXT;
}

uint32_t mathexpr_abi_version(void) noexcept
{
    return MATHEXPR_ABI_VERSION;
}

int32_t mathexpr_checks_handles(void) noexcept
{
#if defined(MATHEXPR_CHECK_HANDLES)
    return 1;
#else
    return 0;
#endif
}
