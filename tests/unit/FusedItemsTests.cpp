// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FusedItemsTests.cpp - items that scalar code fuses, and the factors of conversions.
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/run/ScalingKernels.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

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
            fused.insert(std::wstring(definition.symbol));
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

// The factors of conversions are fused in pairs, in any order of multiplication and division.
TEST(FusedItems, AreFactorsOfConversionsInTwos)
{
    const ConversionFormula x;
    const auto scaled = [](const ConversionFormula& formula, double number) {
        std::vector<MTScalarStep> steps;
        for (std::size_t step = 0; step < countScalingSteps(formula); ++step)
        {
            const auto form = static_cast<std::size_t>(MTOperandForm::ValueMemory);
            MTScalarStep scaling{};
            scaling.kernel = findScalingStep(formula, step)[form];
            scaling.a = factorsOfStep(formula, step).data();
            steps.push_back(scaling);
        }
        MTScalarStep end{};
        end.kernel = [](const MTScalarStep*, double value, void* result, const MTScalarOwner*, void*) {
            *static_cast<double*>(result) = value;
            return true;
        };
        steps.push_back(end);
        steps[0].kernel(steps.data(), number, &number, nullptr, nullptr);
        return number;
    };
    for (const double number : {0.1, -7.0, 1e300})
    {
        EXPECT_EQ(scaled(x, number), number);
        EXPECT_EQ(scaled(x * 3.0, number), number * 3.0);
        EXPECT_EQ(scaled(x / 3.0, number), number / 3.0);
        EXPECT_EQ(scaled(x * 3.0 * 0.7, number), number * 3.0 * 0.7);
        EXPECT_EQ(scaled(x * 3.0 / 0.7, number), number * 3.0 / 0.7);
        EXPECT_EQ(scaled(x / 3.0 * 0.7, number), number / 3.0 * 0.7);
        EXPECT_EQ(scaled(x / 3.0 / 0.7, number), number / 3.0 / 0.7);
        EXPECT_EQ(scaled(x / 3.0 / 0.7 * 1e9, number), number / 3.0 / 0.7 * 1e9);
        EXPECT_EQ((x / 3.0 * 0.7 / 1e9).compute(number), number / 3.0 * 0.7 / 1e9);
    }
}

}
