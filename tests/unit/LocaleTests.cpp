// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LocaleTests.cpp - the host's locale has no effect.
//
// With glibc, the build creates locales of several kinds, which the tests find through LOCPATH: a decimal comma,
// Turkish letters, 8-bit and multibyte characters, non-ASCII digits. The system's locales are tried as well.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <memory>
#include <string>
#include <vector>

namespace {

void expectTheSameLanguage()
{
    MathExpression expression(true, nullptr);
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"1.5+[0.25,2,3]*[2.5,0,0]"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.x, 2.125);
    ASSERT_TRUE(expression.setExpression(L"1234567.25"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.x, 1234567.25);
    ASSERT_TRUE(expression.setExpression(L"min(1,5)"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.x, 1.0);
    EXPECT_THROW(expression.setExpression(L"1,5"), mathexpr::ParsingException);

    // Names fold A to Z only. The dotless i and accented letters are not folded.
    ASSERT_TRUE(expression.setExpression(L"Idle=4"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_TRUE(expression.setExpression(L"iDLE"));
    EXPECT_THROW(expression.setExpression(L"\u0131dle"), mathexpr::ParsingException);
    EXPECT_THROW(expression.setExpression(L"\u0130dle"), mathexpr::ParsingException);
    ASSERT_TRUE(expression.setExpression(L"\u00c9=1"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_TRUE(expression.setExpression(L"\u00c9"));
    EXPECT_THROW(expression.setExpression(L"\u00e9"), mathexpr::ParsingException);
}

/// Sets the C library's locale while the object exists.
class CLocale
{
public:
    CLocale(std::initializer_list<const char*> names) : previous(std::setlocale(LC_ALL, nullptr))
    {
        for (const char* const name : names)
        {
            if (!set)
            {
                set = std::setlocale(LC_ALL, name) != nullptr;
            }
        }
    }
    ~CLocale() { std::setlocale(LC_ALL, previous.c_str()); }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

    bool isSet() const { return set; }

private:
    std::string previous;
    bool set = false;
};

/// Skips a test, unless the build creates the locale.
#ifdef __GLIBC__
#define SKIP_WITHOUT_LOCALE FAIL() << "the locale could not be made; the package 'locales' has what it takes"
#else
#define SKIP_WITHOUT_LOCALE GTEST_SKIP() << "no such locale is installed"
#endif

TEST(Locale, OfTheCLibraryWithACommaChangesNothing)
{
    const CLocale locale{"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "German_Germany"};
    if (!locale.isSet())
    {
        SKIP_WITHOUT_LOCALE;
    }
    char half[8];
    std::snprintf(half, sizeof(half), "%.1f", 0.5);
    ASSERT_STREQ(half, "0,5");
    expectTheSameLanguage();
}

TEST(Locale, OfTheCLibraryInTurkishChangesNothing)
{
    const CLocale locale{"tr_TR.UTF-8", "tr_TR.utf8", "Turkish_Turkey"};
    if (!locale.isSet())
    {
        SKIP_WITHOUT_LOCALE;
    }
    expectTheSameLanguage();
}

#ifdef __GLIBC__
/// The output of a shell command, by lines.
std::vector<std::string> linesOf(const char* command)
{
    std::vector<std::string> lines;
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command, "r"), pclose);
    char line[256];
    while (output != nullptr && std::fgets(line, sizeof(line), output.get()) != nullptr)
    {
        lines.emplace_back(line);
        lines.back().pop_back();
    }
    return lines;
}

TEST(Locale, EachThatTheBuildMadeChangesNothing)
{
    const std::vector<std::string> names = linesOf("ls \"$LOCPATH\"");
    EXPECT_GE(names.size(), 5U);
    for (const std::string& name : names)
    {
        SCOPED_TRACE(name);
        const CLocale locale{name.c_str()};
        ASSERT_TRUE(locale.isSet());
        expectTheSameLanguage();
    }
}

TEST(Locale, EachOfTheSystemChangesNothing)
{
    const char* const given = std::getenv("LOCPATH");
    const std::string path = given != nullptr ? given : "";
    unsetenv("LOCPATH");
    const std::vector<std::string> names = linesOf("locale -a");
    EXPECT_FALSE(names.empty());
    for (const std::string& name : names)
    {
        SCOPED_TRACE(name);
        const CLocale locale{name.c_str()};
        ASSERT_TRUE(locale.isSet());
        expectTheSameLanguage();
    }
    setenv("LOCPATH", path.c_str(), 1);
}
#endif

/// Punctuation of a locale with a decimal comma and grouped thousands.
template <class Character>
class CommaPunctuation final : public std::numpunct<Character>
{
protected:
    Character do_decimal_point() const override { return ','; }
    Character do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Locale, OfTheStreamsChangesNothing)
{
    const std::locale commas(std::locale(std::locale::classic(), new CommaPunctuation<char>),
                             new CommaPunctuation<wchar_t>);
    const std::locale previous = std::locale::global(commas);
    expectTheSameLanguage();
    std::locale::global(previous);
}

}
