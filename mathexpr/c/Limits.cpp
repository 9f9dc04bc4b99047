// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Limits.cpp - implements the limits of mathexpr.h.
#include "mathexpr/Limits.h"

#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"

mathexpr_status mathexpr_set_limits(mathexpr_expression* handle, const mathexpr_limits* limits) noexcept
{
    return changeExpression(handle, [limits](mathexpr_expression& expression) {
        if (limits == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        mathexpr_limits known{};
        if (!readStructure(limits, known))
        {
            return MATHEXPR_BAD_SIZE;
        }
        const mathexpr::ExpressionLimits own{known.max_text_length, known.max_records, known.max_nesting};
        mathexpr::setLimits(expression.object(), own);  // cannot be refused, since no call is in progress
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_get_limits(const mathexpr_expression* handle, mathexpr_limits* limits) noexcept
{
    return readExpression(handle, [limits](mathexpr_expression& expression) {
        if (limits == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!hasPlausibleSize(limits))
        {
            return MATHEXPR_BAD_SIZE;
        }
        const mathexpr::ExpressionLimits own = mathexpr::getLimits(expression.object());
        mathexpr_limits known{};
        known.max_text_length = own.maxTextLength;
        known.max_records = own.maxRecords;
        known.max_nesting = own.maxNesting;
        writeStructure(known, limits);
        return MATHEXPR_OK;
    });
}
