// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* answers.c - see answers.h. */
#include "tests/c/answers.h"

#include <string.h>

void prepare_answers(struct answers* answers)
{
    memset(answers, 0xEE, sizeof(*answers));
    answers->tokens.size = sizeof(answers->tokens);
    answers->text.size = sizeof(answers->text);
    answers->text16.size = sizeof(answers->text16);
    answers->spans.size = sizeof(answers->spans);
    answers->renaming.size = sizeof(answers->renaming);
    answers->renaming16.size = sizeof(answers->renaming16);
    answers->literals.size = sizeof(answers->literals);
    answers->diagnostic.size = sizeof(answers->diagnostic);
    answers->diagnostic16.size = sizeof(answers->diagnostic16);
    answers->signature.size = sizeof(answers->signature);
    answers->signature16.size = sizeof(answers->signature16);
    answers->hover.size = sizeof(answers->hover);
    answers->hover16.size = sizeof(answers->hover16);
    answers->completions.size = sizeof(answers->completions);
    answers->completions16.size = sizeof(answers->completions16);
}

void set_sizes(struct answers* answers, uint32_t size)
{
    answers->tokens.size = answers->text.size = answers->text16.size = answers->spans.size = size;
    answers->renaming.size = answers->renaming16.size = answers->literals.size = size;
    answers->diagnostic.size = answers->diagnostic16.size = size;
    answers->signature.size = answers->signature16.size = answers->hover.size = answers->hover16.size = size;
    answers->completions.size = answers->completions16.size = size;
}
