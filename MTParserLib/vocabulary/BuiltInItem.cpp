// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInItem.cpp - what items answer about themselves, out of their texts.
#include "MTParserLib/vocabulary/BuiltInItem.h"

std::wstring DescribedOperator::getHelpString() const
{
    return describe().help;
}

std::wstring DescribedOperator::getDescription() const
{
    return describe().description;
}

std::int32_t DescribedOperator::getPrecedence() const
{
    return describe().precedence;
}

std::wstring DescribedOperator::getSymbol() const
{
    return describe().symbol;
}

bool DescribedOperator::isUnaryOp() const
{
    return describe().unary;
}

std::wstring DescribedFunction::getHelpString() const
{
    return describe().help;
}

std::wstring DescribedFunction::getDescription() const
{
    return describe().description;
}

std::wstring DescribedFunction::getSymbol() const
{
    return describe().symbol;
}

std::uint32_t DescribedFunction::getNbArgs() const
{
    return describe().nbArgs;
}
