// LocaleTests.cpp - a host that sets a locale of its own changes nothing.
//
// The build makes a comma-decimal and a Turkish locale where it can, and the tests look for them in LOCPATH.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <locale>
#include <string>

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
    EXPECT_THROW(expression.setExpression(L"1,5"), ParsingException);

    // Names fold A to Z and nothing else: neither the dotless i nor a letter with an accent.
    ASSERT_TRUE(expression.setExpression(L"Idle=4"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_TRUE(expression.setExpression(L"iDLE"));
    EXPECT_THROW(expression.setExpression(L"\u0131dle"), ParsingException);
    EXPECT_THROW(expression.setExpression(L"\u0130dle"), ParsingException);
    ASSERT_TRUE(expression.setExpression(L"\u00c9=1"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_TRUE(expression.setExpression(L"\u00c9"));
    EXPECT_THROW(expression.setExpression(L"\u00e9"), ParsingException);
}

/// Sets a locale of the C library while it lives.
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

TEST(Locale, OfTheCLibraryWithACommaChangesNothing)
{
    const CLocale locale{"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "German_Germany"};
    if (!locale.isSet())
    {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
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
        GTEST_SKIP() << "no Turkish locale is installed";
    }
    expectTheSameLanguage();
}

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
