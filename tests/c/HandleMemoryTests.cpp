// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HandleMemoryTests.cpp - every allocating function of the C interface, with each of its allocations failing in turn:
// the status reports it, nothing leaks, and the same call succeeds with enough memory.
#include "tests/support/FailingMemory.h"

#include <mathexpr_editor.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::size_t zt = MATHEXPR_ZERO_TERMINATED;

std::int32_t answerTwo(void*, const char*, std::size_t, mathexpr_value* value)
{
    *value = mathexpr_value{MATHEXPR_NUMBER, 0, 0, 0, 2.0, 0.0, 0.0};
    return MATHEXPR_LOOKUP_FOUND;
}

void showNothing(void*, std::uint32_t, const char*, std::size_t) {}

const char* offerOne(void*, std::uint32_t index)
{
    return index == 0 ? "a name of the host that is too long to be held in place" : nullptr;
}

mathexpr_options_utf8 options(std::uint32_t kind)
{
    mathexpr_options_utf8 made{};
    made.size = sizeof(made);
    made.kind = kind;
    made.flags = MATHEXPR_SHOW_MESSAGES;
    made.lookup = kind == MATHEXPR_EXPRESSION ? answerTwo : nullptr;
    made.show_message = showNothing;
    made.get_name = offerOne;
    return made;
}

/// Makes a call in which all allocations after the first few fail.
template <class Call>
mathexpr_status callWith(std::size_t allocations, Call call)
{
    const memory::Shortage shortage(allocations + 1, memory::Failing::FromThenOn);
    return call();
}

/// Makes a call on a new expression in which no allocation succeeds, then one, and so on until the call succeeds.
template <class Call>
void runOutOfMemory(std::uint32_t kind, const char* text, Call call)
{
    const mathexpr_options_utf8 with = options(kind);
    std::size_t allowed = 0;
    mathexpr_status status = MATHEXPR_OUT_OF_MEMORY;
    for (; status != MATHEXPR_OK && allowed < 10000; ++allowed)
    {
        mathexpr_expression* expression = nullptr;
        ASSERT_EQ(mathexpr_create_utf8(&with, &expression), MATHEXPR_OK);
        if (text != nullptr)
        {
            mathexpr_set_expression_utf8(expression, text, zt);
        }
        status = callWith(allowed, [&] { return call(expression); });
        ASSERT_TRUE(status == MATHEXPR_OK || status == MATHEXPR_OUT_OF_MEMORY) << status << " after " << allowed;
        EXPECT_EQ(call(expression), MATHEXPR_OK) << "after " << allowed;
        EXPECT_EQ(mathexpr_destroy(expression), MATHEXPR_OK);
    }
    EXPECT_EQ(status, MATHEXPR_OK);
    EXPECT_GT(allowed, 1U) << "nothing was allocated";
}

const char* const longText = "width*2 + a_name_that_is_too_long_to_be_held_in_place * [1,2,3]";

TEST(Memory, RunsOutWhileAnExpressionIsMade)
{
    for (const std::uint32_t kind : {MATHEXPR_EXPRESSION, MATHEXPR_CALCULATOR})
    {
        const mathexpr_options_utf8 with = options(kind);
        mathexpr_expression* expression = nullptr;
        std::size_t allowed = 0;
        for (; expression == nullptr && allowed < 10000; ++allowed)
        {
            const mathexpr_status status = callWith(allowed, [&] { return mathexpr_create_utf8(&with, &expression); });
            ASSERT_EQ(status, expression == nullptr ? MATHEXPR_OUT_OF_MEMORY : MATHEXPR_OK) << allowed;
        }
        EXPECT_GT(allowed, 1U);
        EXPECT_EQ(mathexpr_destroy(expression), MATHEXPR_OK);
    }
}

TEST(Memory, RunsOutWhileATextIsCompiled)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, nullptr, [](mathexpr_expression* expression) {
        return mathexpr_set_expression_utf8(expression, longText, zt);
    });
}

TEST(Memory, RunsOutWhileATextIsComputed)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, nullptr, [](mathexpr_expression* expression) {
        mathexpr_value value{};
        return mathexpr_evaluate_text_utf16(expression, u"a_variable_of_some_length_or_other = 2 * 3", zt, &value);
    });
    runOutOfMemory(MATHEXPR_CALCULATOR, nullptr, [](mathexpr_expression* expression) {
        mathexpr_value value{};
        return mathexpr_calculate_utf8(expression, "a_variable_of_some_length_or_other = 2 * 3", zt, 10, &value);
    });
}

TEST(Memory, RunsOutWhileACopyIsMade)
{
    runOutOfMemory(MATHEXPR_CALCULATOR, nullptr, [](mathexpr_expression* expression) {
        mathexpr_expression* copy = nullptr;
        const mathexpr_status status = mathexpr_copy(expression, &copy);
        EXPECT_EQ(mathexpr_destroy(copy), MATHEXPR_OK);
        return status;
    });
}

TEST(Memory, RunsOutWhileADiagnosticIsMade)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, "an_unknown_function_of_some_length(1)", [](mathexpr_expression* expression) {
        mathexpr_diagnostic_utf8 diagnostic{};
        diagnostic.size = sizeof(diagnostic);
        return mathexpr_get_diagnostic_utf8(expression, &diagnostic);
    });
    runOutOfMemory(MATHEXPR_EXPRESSION, "a_name_of_some_length_e+2pi", [](mathexpr_expression* expression) {
        mathexpr_diagnostic_utf8 diagnostic{};
        diagnostic.size = sizeof(diagnostic);
        return mathexpr_get_diagnostic_utf8(expression, &diagnostic);
    });
    runOutOfMemory(MATHEXPR_CALCULATOR, nullptr, [](mathexpr_expression* expression) {
        mathexpr_diagnostic_utf16 diagnostic{};
        diagnostic.size = sizeof(diagnostic);
        return mathexpr_get_diagnostic_utf16(expression, &diagnostic);
    });
}

TEST(Memory, RunsOutWhileNamesAreListed)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, longText, [](mathexpr_expression* expression) {
        mathexpr_names_utf8 names{};
        names.size = sizeof(names);
        return mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_USED, &names);
    });
}

TEST(Memory, RunsOutWhileVariablesAreUsed)
{
    static const std::string name(100, 'v');
    runOutOfMemory(MATHEXPR_EXPRESSION, nullptr, [](mathexpr_expression* expression) {
        const mathexpr_value value{MATHEXPR_NUMBER, 0, 0, 0, 2.0, 0.0, 0.0};
        return mathexpr_set_variable_utf8(expression, name.c_str(), zt, &value, nullptr);
    });
    runOutOfMemory(MATHEXPR_EXPRESSION, name.c_str(), [](mathexpr_expression* expression) {
        mathexpr_value value{};
        return mathexpr_get_variable_utf8(expression, name.c_str(), zt, &value);
    });
    runOutOfMemory(MATHEXPR_EXPRESSION, name.c_str(), [](mathexpr_expression* expression) {
        mathexpr_value* address = nullptr;
        return mathexpr_get_variable_address_utf8(expression, name.c_str(), zt, &address);
    });
}

TEST(Memory, RunsOutWhileAFunctionIsMadeOrCopied)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, longText, [](mathexpr_expression* expression) {
        const char* const argument = "a_name_that_is_too_long_to_be_held_in_place";
        mathexpr_function* function = nullptr;
        mathexpr_function* copy = nullptr;
        mathexpr_status status = mathexpr_create_function_utf8(expression, longText, zt, &argument, 1, &function);
        if (status == MATHEXPR_OK)
        {
            status = mathexpr_copy_function(function, &copy);
        }
        EXPECT_EQ(mathexpr_destroy_function(copy), MATHEXPR_OK);
        EXPECT_EQ(mathexpr_destroy_function(function), MATHEXPR_OK);
        return status;
    });
}

TEST(Memory, IsNotNeededToCallAFunction)
{
    mathexpr_expression* expression = nullptr;
    ASSERT_EQ(mathexpr_create_utf8(nullptr, &expression), MATHEXPR_OK);
    const mathexpr_value zero{};
    ASSERT_EQ(mathexpr_set_variable_utf8(expression, "x", zt, &zero, nullptr), MATHEXPR_OK);
    const char* const argument = "x";
    mathexpr_function* function = nullptr;
    ASSERT_EQ(mathexpr_create_function_utf8(expression, "dist([x,0],[0,3])", zt, &argument, 1, &function), MATHEXPR_OK);
    const double four = 4;
    double result = 0;
    const mathexpr_status status = callWith(0, [&] { return mathexpr_call_function(function, &four, &result); });
    EXPECT_EQ(status, MATHEXPR_OK);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(mathexpr_destroy_function(function), MATHEXPR_OK);
    EXPECT_EQ(mathexpr_destroy(expression), MATHEXPR_OK);
}

TEST(Memory, RunsOutDuringBulkEvaluation)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, "width*2", [](mathexpr_expression* expression) {
        const double widths[] = {1, 2, 3};
        double found[3] = {};
        mathexpr_column_utf8 column{};
        column.size = sizeof(column);
        column.name = "width";
        column.name_length = zt;
        column.data = widths;
        column.stride = sizeof(double);
        mathexpr_results results{};
        results.size = sizeof(results);
        results.data = found;
        results.stride = sizeof(double);
        return mathexpr_evaluate_bulk_utf8(expression, &column, 1, 3, &results, 1, nullptr);
    });
}

// A typed text, and a name in it.
const char* const typed = "1+min(2pi, an_unknown_name_that_is_too_long_to_be_held_in_place";
const char16_t* const typed16 = u"1+min(2pi, an_unknown_name_that_is_too_long_to_be_held_in_place";
const char* const typedName = "an_unknown_name_that_is_too_long_to_be_held_in_place";
const char16_t* const typedName16 = u"an_unknown_name_that_is_too_long_to_be_held_in_place";

/// Calls a service while memory runs out.
template <class Answer, class Service>
void runOutInService(Service service)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, nullptr, [service](mathexpr_expression* expression) {
        Answer answer{};
        answer.size = sizeof(answer);
        return service(expression, answer);
    });
}

TEST(Memory, RunsOutWhileATextIsEdited)
{
    runOutInService<mathexpr_tokens>(
        [](auto* expression, auto& answer) { return mathexpr_get_tokens_utf8(expression, typed, zt, &answer); });
    runOutInService<mathexpr_tokens>(
        [](auto* expression, auto& answer) { return mathexpr_get_tokens_utf16(expression, typed16, zt, &answer); });
    runOutInService<mathexpr_text_utf8>(
        [](auto* expression, auto& answer) { return mathexpr_format_text_utf8(expression, typed, zt, &answer); });
    runOutInService<mathexpr_text_utf16>(
        [](auto* expression, auto& answer) { return mathexpr_format_text_utf16(expression, typed16, zt, &answer); });
    runOutInService<mathexpr_text_utf8>(
        [](auto* expression, auto& answer) { return mathexpr_typeset_text_utf8(expression, typed, zt, 0, &answer); });
    runOutInService<mathexpr_text_utf16>([](auto* expression, auto& answer) {
        return mathexpr_typeset_text_utf16(expression, typed16, zt, 0, &answer);
    });
    runOutInService<mathexpr_spans>([](auto* expression, auto& answer) {
        return mathexpr_find_references_utf8(expression, typed, zt, typedName, zt, &answer);
    });
    runOutInService<mathexpr_spans>([](auto* expression, auto& answer) {
        return mathexpr_find_references_utf16(expression, typed16, zt, typedName16, zt, &answer);
    });
    runOutInService<mathexpr_renaming_utf8>([](auto* expression, auto& answer) {
        return mathexpr_rename_in_text_utf8(expression, typed, zt, typedName, zt, "another_name_of_some_length", zt,
                                            &answer);
    });
    runOutInService<mathexpr_renaming_utf16>([](auto* expression, auto& answer) {
        return mathexpr_rename_in_text_utf16(expression, typed16, zt, typedName16, zt, u"another_name_of_some_length",
                                             zt, &answer);
    });
    runOutInService<mathexpr_literals>(
        [](auto* expression, auto& answer) { return mathexpr_get_literals_utf8(expression, typed, zt, &answer); });
    runOutInService<mathexpr_literals>(
        [](auto* expression, auto& answer) { return mathexpr_get_literals_utf16(expression, typed16, zt, &answer); });
}

TEST(Memory, RunsOutWhileTypingIsHelped)
{
    runOutInService<mathexpr_diagnostic_utf8>([](auto* expression, auto& answer) {
        std::uint32_t state = 0;
        return mathexpr_diagnose_text_utf8(expression, typed, zt, 0, &state, &answer);
    });
    runOutInService<mathexpr_diagnostic_utf16>([](auto* expression, auto& answer) {
        std::uint32_t state = 0;
        return mathexpr_diagnose_text_utf16(expression, typed16, zt, MATHEXPR_MAY_ASK_HOST, &state, &answer);
    });
    runOutInService<mathexpr_signature_utf8>(
        [](auto* expression, auto& answer) { return mathexpr_get_signature_utf8(expression, typed, zt, 99, &answer); });
    runOutInService<mathexpr_signature_utf16>([](auto* expression, auto& answer) {
        return mathexpr_get_signature_utf16(expression, typed16, zt, 99, &answer);
    });
    runOutInService<mathexpr_hover_utf8>(
        [](auto* expression, auto& answer) { return mathexpr_get_hover_utf8(expression, typed, zt, 3, 0, &answer); });
    runOutInService<mathexpr_hover_utf16>([](auto* expression, auto& answer) {
        return mathexpr_get_hover_utf16(expression, u"sqrt(16)*2", zt, 0, 0, &answer);
    });
    runOutInService<mathexpr_completions_utf8>([](auto* expression, auto& answer) {
        const char* const recent[] = {"a name of the host that is too long to be held in place"};
        const mathexpr_completion_options_utf8 options{sizeof(options), 5, recent, 1, nullptr, nullptr};
        return mathexpr_get_completions_utf8(expression, "2*a", zt, 3, &options, &answer);
    });
    runOutInService<mathexpr_completions_utf16>([](auto* expression, auto& answer) {
        const mathexpr_completion_options_utf16 options{sizeof(options), 5, nullptr, 0, nullptr, nullptr};
        return mathexpr_get_completions_utf16(expression, u"2*sq", zt, 4, &options, &answer);
    });
}

TEST(Memory, RunsOutWhileNamesAreIndexed)
{
    runOutOfMemory(MATHEXPR_EXPRESSION, nullptr, [](mathexpr_expression* expression) {
        const mathexpr_name_notes_utf8 notes{sizeof(notes), MATHEXPR_VALUE_NUMBER,
                                             "a description that is too long to be held in place", nullptr};
        mathexpr_name_index* index = nullptr;
        mathexpr_status status = mathexpr_create_name_index(&index);
        for (const char* const name : {"outerWall_depth_of_the_building", "innerWall_depth_of_the_building"})
        {
            status = status == MATHEXPR_OK ? mathexpr_add_indexed_name_utf8(index, name, zt, &notes) : status;
        }
        if (status == MATHEXPR_OK)
        {
            status = mathexpr_remove_indexed_name_utf16(index, u"innerWall_depth_of_the_building", zt);
        }
        mathexpr_completions_utf8 answer{};
        answer.size = sizeof(answer);
        status = status == MATHEXPR_OK ? mathexpr_set_name_index(expression, index) : status;
        status =
            status == MATHEXPR_OK ? mathexpr_get_completions_utf8(expression, "wall", zt, 4, nullptr, &answer) : status;
        EXPECT_TRUE(status != MATHEXPR_OK || answer.item_count == 1);
        EXPECT_EQ(mathexpr_destroy_name_index(index), MATHEXPR_OK);
        return status;
    });
}

// Last, because the texts are converted once per process.
TEST(Memory, RunsOutWhileTheVocabularyIsConverted)
{
    mathexpr_vocabulary_item_utf8 item{};
    item.size = sizeof(item);
    std::size_t allowed = 0;
    mathexpr_status status = MATHEXPR_OUT_OF_MEMORY;
    for (; status != MATHEXPR_OK && allowed < 10000; ++allowed)
    {
        status = callWith(allowed, [&] { return mathexpr_get_vocabulary_item_utf8(0, &item); });
        ASSERT_TRUE(status == MATHEXPR_OK || status == MATHEXPR_OUT_OF_MEMORY) << status;
    }
    EXPECT_GT(allowed, 1U);
    EXPECT_STREQ(item.help, "");
}

}
