// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FusedItemsTests.cpp - which items scalar code fuses.
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/MTScalarCode.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

TEST(FusedItems, AreTheArithmetic)
{
    MTParserRegistrar registrar;
    registrar.setSyntax({L'.', L',', L'[', L']'});
    registerVocabulary(registrar);
    std::set<std::wstring> fused;
    std::set<std::size_t> indices;
    for (std::size_t index = 0; index < registrar.getNbOperators(); ++index)
    {
        const MTOperatorDefinition& definition = registrar.getOperatorDefinition(index);
        const MTScalarKernels* const scalar = definition.kernels->scalar;
        if (scalar != nullptr && scalar->fusedIndex != MTScalarKernels::notFused)
        {
            fused.insert(definition.symbol);
            indices.insert(scalar->fusedIndex);
        }
    }
    EXPECT_EQ(fused, (std::set<std::wstring>{L"+", L"-", L"*", L"/"}));
    EXPECT_EQ(indices.size(), fused.size());
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        const MTScalarKernels* const scalar = registrar.getFunctionDefinition(index).kernels->scalar;
        EXPECT_TRUE(scalar == nullptr || scalar->fusedIndex == MTScalarKernels::notFused) << index;
    }
}

}
