// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FusedItemsTests.cpp - which items number code fuses.
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/MTNumberCode.h"

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
        const MTNumberKernels* const numbers = definition.kernels->numbers;
        if (numbers != nullptr && numbers->fusedIndex != MTNumberKernels::notFused)
        {
            fused.insert(definition.symbol);
            indices.insert(numbers->fusedIndex);
        }
    }
    EXPECT_EQ(fused, (std::set<std::wstring>{L"+", L"-", L"*", L"/"}));
    EXPECT_EQ(indices.size(), fused.size());
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        const MTNumberKernels* const numbers = registrar.getFunctionDefinition(index).kernels->numbers;
        EXPECT_TRUE(numbers == nullptr || numbers->fusedIndex == MTNumberKernels::notFused) << index;
    }
}

}
