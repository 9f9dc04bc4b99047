// MTParserPreprocessing.cpp - both stages in one pass over the text.
//
// One pass gives what removing the blanks and then replacing one shorthand after the other gives, because no
// replacement ends in "e" or begins with "+", and none contains a bracket or an "e+": inserted text never makes a new
// shorthand.
#include "MTParserLib/MTParserPreprocessing.h"

void preprocess(const wchar_t* text, std::wstring& rewritten)
{
    rewritten.clear();
    if (text == nullptr)
    {
        return;
    }
    for (; *text != L'\0'; ++text)
    {
        switch (*text)
        {
        case L' ':
            break;
        case L'[':
            rewritten += L"point(";
            break;
        case L']':
            rewritten += L')';
            break;
        case L'+':
            if (!rewritten.empty() && rewritten.back() == L'e')
            {
                rewritten.pop_back();
                rewritten += L"*10^";
            }
            else
            {
                rewritten += L'+';
            }
            break;
        default:
            rewritten += *text;
            break;
        }
    }
}
