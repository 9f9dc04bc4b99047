// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MutantChoice.h - chooses one of the mutants in a source at run time. schemata.py adds the include to these sources.
//
// MATHEXPR_MUTANT is the number of the chosen mutant. MATHEXPR_MUTANTS_REACHED names a file with one byte per mutant,
// which becomes 1 when the mutant's code is reached. Processes that a test starts inherit both variables.
#ifndef MATHEXPR_MUTANT_CHOICE_H
#define MATHEXPR_MUTANT_CHOICE_H

extern "C" __attribute__((visibility("default"))) int mathexprChosenMutant;
extern "C" __attribute__((visibility("default"))) unsigned char* mathexprReachedMutants;

/// Whether a mutant is chosen; always false in constant evaluation, which cannot depend on a choice at run time.
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
