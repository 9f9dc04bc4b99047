// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostEditorTests.cpp - the editor services of a C++ host: results own their memory, positions in bytes, failures.
#include <mathexpr_editor.hpp>

#include <gtest/gtest.h>

namespace {

using mathexpr::Editor;
using mathexpr::Expression;
using mathexpr::Value;

struct HostFailure
{
    int number;
};

class HostEditor : public testing::Test
{
protected:
    HostEditor() { expression.variables().set("w\xC3\xA4", 5.0); }

    Expression expression;
    Editor editor{expression};
};

TEST_F(HostEditor, SplitsATextIntoTokens)
{
    const std::vector<Editor::Token> tokens = editor.tokens("(w\xC3\xA4 +1)");
    ASSERT_EQ(tokens.size(), 6u);
    EXPECT_EQ(tokens[0].kind, static_cast<std::uint32_t>(MATHEXPR_TOKEN_BRACKET));
    EXPECT_EQ(tokens[0].partner, std::optional<std::size_t>(5));
    EXPECT_EQ(tokens[1].kind, static_cast<std::uint32_t>(MATHEXPR_TOKEN_VARIABLE));
    EXPECT_EQ(tokens[1].start, 1u);
    EXPECT_EQ(tokens[1].length, 3u);
    EXPECT_EQ(tokens[1].depth, 1u);
    EXPECT_EQ(tokens[1].partner, std::nullopt);
    EXPECT_TRUE(editor.tokens("").empty());
}

TEST_F(HostEditor, KeepsAnswersApart)
{
    const std::string first = editor.format("a=1*-2");
    const std::string second = editor.format("3+4");
    EXPECT_EQ(first, "a = 1 * -2");
    EXPECT_EQ(second, "3 + 4");
}

TEST_F(HostEditor, Typesets)
{
    EXPECT_EQ(editor.typeset("p_1/2", MATHEXPR_NOTATION_LATEX), "\\frac{p_{1}}{2}");
    EXPECT_EQ(editor.typeset("2^\xC3\xA4", MATHEXPR_NOTATION_MATHML),
              "<math xmlns=\"http://www.w3.org/1998/Math/MathML\"><msup><mn>2</mn><mi>\xC3\xA4</mi></msup></math>");
    const auto refused = editor.tryTypeset("1", 2);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().status(), MATHEXPR_BAD_OPTION);
}

TEST_F(HostEditor, FollowsAName)
{
    const std::vector<Editor::Span> uses = editor.references("\xC3\xA4+x*X", "x");
    ASSERT_EQ(uses.size(), 2u);
    EXPECT_EQ(uses[0].start, 3u);
    EXPECT_EQ(uses[1].start, 5u);
    EXPECT_EQ(uses[1].length, 1u);

    const Editor::Renaming renaming = editor.rename("\xC3\xA4+x*X", "x", "radius");
    EXPECT_EQ(renaming.refusal, static_cast<std::uint32_t>(MATHEXPR_RENAME_DONE));
    ASSERT_EQ(renaming.edits.size(), 2u);
    EXPECT_EQ(renaming.edits[1].start, 5u);
    EXPECT_EQ(renaming.edits[1].length, 1u);
    EXPECT_EQ(renaming.edits[1].replacement, "radius");

    const Editor::Renaming refused = editor.rename("1+x+1", "x", "size");
    EXPECT_EQ(refused.refusal, static_cast<std::uint32_t>(MATHEXPR_RENAME_READ_OTHERWISE));
    EXPECT_EQ(refused.refusedAt.start, 2u);
    EXPECT_EQ(refused.refusedAt.length, 1u);
    EXPECT_TRUE(refused.edits.empty());
}

TEST_F(HostEditor, FindsLiterals)
{
    const std::vector<Editor::Literal> literals = editor.literals("2*[1,-3]");
    ASSERT_EQ(literals.size(), 4u);
    EXPECT_EQ(literals[1].start, 2u);
    EXPECT_EQ(literals[1].length, 6u);
    EXPECT_EQ(literals[1].value, Value(mathexpr::Point{1, -3, 0}));
    EXPECT_EQ(literals[3].value, Value(-3.0));
}

TEST_F(HostEditor, DiagnosesWhileTyping)
{
    const Editor::Diagnosis complete = editor.diagnose("1+1");
    EXPECT_EQ(complete.state, static_cast<std::uint32_t>(MATHEXPR_TYPING_COMPLETE));
    EXPECT_FALSE(complete.failure);
    const Editor::Diagnosis unfinished = editor.diagnose("1+");
    EXPECT_EQ(unfinished.state, static_cast<std::uint32_t>(MATHEXPR_TYPING_UNFINISHED));
    ASSERT_TRUE(unfinished.failure);
    EXPECT_EQ(unfinished.failure->status(), MATHEXPR_PARSING_ERROR);

    // The failure is the same as when compiling.
    for (const char* const text : {"1+2pi", "99999999999", "a=", "sin(1"})
    {
        const Editor::Diagnosis diagnosis = editor.diagnose(text);
        const mathexpr::Result<void> compiled = Expression().tryCompile(text);
        ASSERT_TRUE(diagnosis.failure) << text;
        ASSERT_FALSE(compiled) << text;
        EXPECT_EQ(diagnosis.failure->status(), compiled.error().status()) << text;
        EXPECT_STREQ(diagnosis.failure->what(), compiled.error().what()) << text;
        EXPECT_EQ(diagnosis.failure->start(), compiled.error().start()) << text;
        EXPECT_EQ(diagnosis.failure->hints(), compiled.error().hints()) << text;
        EXPECT_EQ(diagnosis.failure->fix().has_value(), compiled.error().fix().has_value()) << text;
    }
    EXPECT_EQ(editor.diagnose("1+2pi").failure->fix()->replacement, "2*pi");
}

TEST_F(HostEditor, FindsTheCallAroundTheCursor)
{
    const Editor::Signature signature = editor.signature("w\xC3\xA4+min(1,2", 10);
    EXPECT_EQ(signature.function, "min");
    EXPECT_EQ(signature.name.start, 4u);
    EXPECT_EQ(signature.name.length, 3u);
    EXPECT_EQ(signature.argument, 1u);
    ASSERT_EQ(signature.overloads.size(), 3u);
    EXPECT_EQ(signature.overloads[1].help, "min(x,y,z)");
    EXPECT_EQ(signature.overloads[1].description, "Return smaller of three values");
    EXPECT_EQ(signature.overloads[1].parameters, (std::vector<std::string>{"x", "y", "z"}));
    EXPECT_EQ(signature.overloads[1].parameterKind, static_cast<std::uint32_t>(MATHEXPR_VALUE_NUMBER));
    EXPECT_EQ(signature.activeOverload, 0u);
    EXPECT_EQ(signature.wanted, static_cast<std::uint32_t>(MATHEXPR_VALUE_NUMBER));
    EXPECT_EQ(editor.signature("sin(", 4).unit, "degree");
    EXPECT_TRUE(editor.signature("1", 1).overloads.empty());
}

TEST_F(HostEditor, ExplainsWhatIsUnderTheCursor)
{
    const Editor::Hover hover = editor.hover("2*sqrt(16)", 3);
    EXPECT_EQ(hover.kind, static_cast<std::uint32_t>(MATHEXPR_TOKEN_FUNCTION));
    EXPECT_EQ(hover.span.start, 2u);
    EXPECT_EQ(hover.name, "sqrt");
    EXPECT_EQ(hover.help, "sqrt(x)");
    EXPECT_EQ(hover.description, "Square root");
    EXPECT_NE(hover.domain, "");
    EXPECT_EQ(hover.example, "sqrt(2)");
    EXPECT_TRUE(hover.exampleValue);
    EXPECT_EQ(hover.value, std::optional<Value>(4.0));
    EXPECT_EQ(hover.valueSpan.length, 8u);
    EXPECT_EQ(editor.hover("sin(1)", 0).unit, "degree");
    EXPECT_EQ(editor.hover("1+2", 1).value, std::nullopt);
}

TEST_F(HostEditor, CompletesWithEdits)
{
    Editor::CompletionOptions options;
    options.recent = {"sqrt"};
    options.maxCount = 1;
    const std::vector<Editor::Completion> calls = editor.completions("w\xC3\xA4*s", 5, options);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].kind, static_cast<std::uint32_t>(MATHEXPR_TOKEN_FUNCTION));
    EXPECT_EQ(calls[0].valueKind, static_cast<std::uint32_t>(MATHEXPR_VALUE_NUMBER));
    EXPECT_EQ(calls[0].name, "sqrt");
    EXPECT_EQ(calls[0].edit.start, 4u);
    EXPECT_EQ(calls[0].edit.length, 1u);
    EXPECT_EQ(calls[0].edit.replacement, "sqrt(2)");
    EXPECT_EQ(calls[0].selection.start, 9u);
    EXPECT_EQ(calls[0].selection.length, 1u);
    EXPECT_EQ(calls[0].value, std::nullopt);
    const std::vector<Editor::Completion> names = editor.completions("w", 1);
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0].name, "w\xC3\xA4");
    EXPECT_EQ(names[0].value, std::optional<Value>(5.0));
}

/// A host whose model has two names.
mathexpr::Options modelOptions(int& askedCount)
{
    mathexpr::Options options;
    options.names = {"model_depth", "model_origin"};
    options.resolver = [&askedCount](std::string_view name) -> std::optional<Value> {
        ++askedCount;
        if (name == "broken")
        {
            throw HostFailure{3};
        }
        return name == "model_depth" ? std::optional<Value>(7.0) : std::nullopt;
    };
    return options;
}

TEST(HostEditorNames, AsksTheHostOnlyWhereAllowed)
{
    int askedCount = 0;
    Expression expression(modelOptions(askedCount));
    Editor editor(expression);
    EXPECT_EQ(editor.tokens("model_depth")[0].kind, static_cast<std::uint32_t>(MATHEXPR_TOKEN_HOST_NAME));
    EXPECT_EQ(editor.hover("model_depth", 0).value, std::nullopt);
    EXPECT_EQ(editor.diagnose("broken+1").state, static_cast<std::uint32_t>(MATHEXPR_TYPING_WRONG));
    EXPECT_EQ(askedCount, 0);
    EXPECT_EQ(editor.hover("model_depth", 0, Editor::HostQuestions::Allowed).value, std::optional<Value>(7.0));
    EXPECT_EQ(askedCount, 1);
    EXPECT_THROW((void)editor.diagnose("broken+1", Editor::HostQuestions::Allowed), HostFailure);
    EXPECT_THROW((void)editor.tryHover("(broken)", 0, Editor::HostQuestions::Allowed), HostFailure);
    EXPECT_EQ(editor.hover("model_depth", 0, Editor::HostQuestions::Allowed).value, std::optional<Value>(7.0));
}

TEST(HostEditorNames, HaveTheHostsNotes)
{
    int askedCount = 0;
    Expression expression(modelOptions(askedCount));
    Editor editor(expression);
    Editor::CompletionOptions options;
    options.notes = [](std::string_view name) -> Editor::NameNotes {
        if (name == "model_origin")
        {
            return {MATHEXPR_VALUE_POINT, "where the model begins", ""};
        }
        return {MATHEXPR_VALUE_NUMBER, "", "depends on this field"};
    };
    const std::vector<Editor::Completion> items = editor.completions("mod", 3, options);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].name, "model_origin");
    EXPECT_EQ(items[0].valueKind, static_cast<std::uint32_t>(MATHEXPR_VALUE_POINT));
    EXPECT_EQ(items[0].description, "where the model begins");
    EXPECT_EQ(items[0].unavailable, "");
    EXPECT_EQ(items[1].name, "model_depth");
    EXPECT_EQ(items[1].unavailable, "depends on this field");

    options.notes = [](std::string_view) -> Editor::NameNotes { throw HostFailure{4}; };
    EXPECT_THROW((void)editor.completions("mod", 3, options), HostFailure);
    EXPECT_EQ(editor.completions("mod", 3).size(), 2u);
}

TEST_F(HostEditor, FindsTheNamesOfAnIndex)
{
    {
        Editor::NameIndex names;
        names.add("w_origin", {MATHEXPR_VALUE_POINT, "where it begins", ""});
        names.add("w_depth", {MATHEXPR_VALUE_NUMBER, "", "depends on this field"});
        names.add("w_gone", {});
        EXPECT_TRUE(names.remove("w_gone"));
        EXPECT_FALSE(names.remove("w_gone"));
        EXPECT_FALSE(names.tryAdd("\xFF", {}));
        EXPECT_THROW(names.add("w_odd", {MATHEXPR_VALUE_EITHER + 1, "", ""}), mathexpr::Error);
        editor.useNames(names);
    }
    const std::vector<Editor::Completion> items = editor.completions("w", 1);
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].name, "w\xC3\xA4");
    EXPECT_EQ(items[1].name, "w_origin");
    EXPECT_EQ(items[1].description, "where it begins");
    EXPECT_EQ(items[2].unavailable, "depends on this field");
    EXPECT_EQ(editor.diagnose("w_depth+1").state, static_cast<std::uint32_t>(MATHEXPR_TYPING_COMPLETE));
}

TEST_F(HostEditor, FailsWithTheTextAtFault)
{
    const auto text = editor.tryTokens("1+\xFF");
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error().status(), MATHEXPR_BAD_UTF8);
    EXPECT_EQ(text.error().start(), 2u);
    const auto name = editor.tryRename("\xC3\xA4", "a", std::string_view("bcd\0e", 5));
    ASSERT_FALSE(name);
    EXPECT_EQ(name.error().status(), MATHEXPR_ZERO_IN_TEXT);
    EXPECT_EQ(name.error().start(), 3u);
    EXPECT_FALSE(editor.tryFormat("\xFF"));
    EXPECT_FALSE(editor.tryReferences("\xFF", "a"));
    EXPECT_FALSE(editor.tryLiterals("\xFF"));
    EXPECT_FALSE(editor.tryDiagnose("\xFF"));
    EXPECT_FALSE(editor.trySignature("\xFF", 0));
    EXPECT_FALSE(editor.tryHover("\xFF", 0));
    EXPECT_THROW((void)editor.completions("\xFF", 0), mathexpr::Error);
}

}
