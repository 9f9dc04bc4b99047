// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HandleThreadTests.cpp - expressions on different threads are independent: their handles, the displays of their
// messages, and the results of the editor services.
#include <mathexpr_editor.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int nbThreads = 16;

void countMessage(void* context, std::uint32_t, const char*, std::size_t)
{
    ++*static_cast<int*>(context);
}

/// @return number of correct values and messages
int useExpressions(int thread)
{
    int nbRight = 0;
    for (int time = 0; time < 200; ++time)
    {
        int nbMessages = 0;
        mathexpr_options_utf8 options{};
        options.size = sizeof(options);
        options.flags = MATHEXPR_SHOW_MESSAGES;
        options.context = &nbMessages;
        options.show_message = countMessage;
        mathexpr_expression* expression = nullptr;
        mathexpr_create_utf8(&options, &expression);
        const mathexpr_value value{MATHEXPR_NUMBER, 0, 0, 0, static_cast<double>(thread), 0.0, 0.0};
        mathexpr_set_variable_utf8(expression, "thread", MATHEXPR_ZERO_TERMINATED, &value, nullptr);
        mathexpr_value result{};
        mathexpr_evaluate_text_utf8(expression, "thread*2", MATHEXPR_ZERO_TERMINATED, &result);
        mathexpr_evaluate_text_utf8(expression, "thread/0", MATHEXPR_ZERO_TERMINATED, &result);
        mathexpr_vocabulary_item_utf16 item{};
        item.size = sizeof(item);
        mathexpr_get_vocabulary_item_utf16(0, &item);
        mathexpr_destroy(expression);
        nbRight += result.x == thread * 2.0 && nbMessages == 1 && item.symbol != nullptr ? 1 : 0;
    }
    return nbRight;
}

/// @return number of correct results of the services
int editTexts(int thread)
{
    constexpr std::size_t zt = MATHEXPR_ZERO_TERMINATED;
    const std::string name = "thread" + std::to_string(thread);
    int nbRight = 0;
    for (int time = 0; time < 20; ++time)
    {
        mathexpr_expression* expression = nullptr;
        mathexpr_create_utf8(nullptr, &expression);
        const mathexpr_value value{MATHEXPR_NUMBER, 0, 0, 0, static_cast<double>(thread), 0.0, 0.0};
        mathexpr_set_variable_utf8(expression, name.c_str(), zt, &value, nullptr);
        mathexpr_tokens tokens{sizeof(tokens), 0, nullptr, 0};
        mathexpr_get_tokens_utf8(expression, (name + "+1").c_str(), zt, &tokens);
        mathexpr_completions_utf8 completions{sizeof(completions), 0, nullptr, 0};
        mathexpr_get_completions_utf8(expression, "2*thre", zt, 6, nullptr, &completions);
        mathexpr_hover_utf8 hover{};
        hover.size = sizeof(hover);
        mathexpr_get_hover_utf8(expression, ("(" + name + "*2)").c_str(), zt, 0, 0, &hover);
        std::uint32_t state = 0;
        mathexpr_diagnostic_utf8 diagnostic{};
        diagnostic.size = sizeof(diagnostic);
        mathexpr_diagnose_text_utf8(expression, "1+2pi", zt, 0, &state, &diagnostic);
        const bool isRight = tokens.token_count == 3 && tokens.tokens[0].kind == MATHEXPR_TOKEN_VARIABLE &&
                             completions.item_count != 0 && completions.items[0].name == name &&
                             hover.value.x == thread * 2.0 && state == MATHEXPR_TYPING_WRONG &&
                             diagnostic.hint_count == 1;
        nbRight += isRight ? 1 : 0;
        mathexpr_destroy(expression);
    }
    return nbRight;
}

/// Runs work on many threads at once; returns the result of each.
template <class Work>
std::vector<int> onThreads(Work work)
{
    std::vector<int> results(nbThreads, 0);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < nbThreads; ++thread)
    {
        threads.emplace_back([&results, &work, thread] { results[static_cast<std::size_t>(thread)] = work(thread); });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    return results;
}

TEST(Threads, UseSeparateExpressions)
{
    EXPECT_EQ(onThreads(useExpressions), std::vector<int>(nbThreads, 200));
}

TEST(Threads, EditSeparateTexts)
{
    EXPECT_EQ(onThreads(editTexts), std::vector<int>(nbThreads, 20));
}

/// @return number of correct values
int callAndDestroy(mathexpr_function* function, int thread)
{
    int nbRight = 0;
    for (int time = 0; time < 500; ++time)
    {
        const double arguments[] = {static_cast<double>(thread), static_cast<double>(time)};
        double result = 0.0;
        mathexpr_function* copy = nullptr;
        nbRight += mathexpr_call_function(function, arguments, &result) == MATHEXPR_OK &&
                           result == thread * 2.0 + time && mathexpr_copy_function(function, &copy) == MATHEXPR_OK &&
                           mathexpr_destroy_function(function) == MATHEXPR_OK
                       ? 1
                       : 0;
        function = copy;  // so that copies of one function are created and destroyed on all threads at once
    }
    mathexpr_destroy_function(function);
    return nbRight;
}

TEST(Threads, ShareTheProgramOfOneFunction)
{
    mathexpr_expression* expression = nullptr;
    ASSERT_EQ(mathexpr_create_utf8(nullptr, &expression), MATHEXPR_OK);
    const mathexpr_value value{MATHEXPR_NUMBER, 0, 0, 0, 0.0, 0.0, 0.0};
    mathexpr_set_variable_utf8(expression, "a", MATHEXPR_ZERO_TERMINATED, &value, nullptr);
    mathexpr_set_variable_utf8(expression, "b", MATHEXPR_ZERO_TERMINATED, &value, nullptr);
    const char* const arguments[] = {"a", "b"};
    // Numbers only, and with points: different engines run these programs.
    for (const char* const text : {"a*2+b", "dist([0,0,0],[a*2,0,0])+b"})
    {
        mathexpr_function* function = nullptr;
        ASSERT_EQ(mathexpr_create_function_utf8(expression, text, MATHEXPR_ZERO_TERMINATED, arguments, 2, &function),
                  MATHEXPR_OK);
        std::vector<mathexpr_function*> copies(nbThreads, nullptr);
        for (mathexpr_function*& copy : copies)
        {
            ASSERT_EQ(mathexpr_copy_function(function, &copy), MATHEXPR_OK);
        }
        ASSERT_EQ(mathexpr_destroy_function(function), MATHEXPR_OK);
        const std::vector<int> nbRight = onThreads(
            [&copies](int thread) { return callAndDestroy(copies[static_cast<std::size_t>(thread)], thread); });
        EXPECT_EQ(nbRight, std::vector<int>(nbThreads, 500)) << text;
    }
    mathexpr_destroy(expression);
}

}
