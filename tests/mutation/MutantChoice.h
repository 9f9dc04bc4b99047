// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MutantChoice.h - chooses, at run time, one of the mutants that a source contains. schemata.py includes it in these sources.
//
// MATHEXPR_MUTANT is the number of the chosen mutant. MATHEXPR_MUTANTS_REACHED names a file with one byte per mutant; bytes of
// mutants whose place is run become 1. Processes that a test starts inherit both.
#ifndef MATHEXPR_MUTANT_CHOICE_H
#define MATHEXPR_MUTANT_CHOICE_H

extern "C" __attribute__((visibility("default"))) int mathexprChosenMutant;
extern "C" __attribute__((visibility("default"))) unsigned char* mathexprReachedMutants;

/// Whether a mutant is chosen. What the compiler evaluates cannot be chosen at run time, and is not mutated.
constexpr bool isMutant(int number) noexcept
{
    if (__builtin_is_constant_evaluated())
    {
        return false;
    }
    if (mathexprReachedMutants != nullptr)
    {
        mathexprReachedMutants[number] = 1;
    }
    return mathexprChosenMutant == number;
}

#endif
