// evaluate.cpp - computes numbers and points, and tells them apart.
#include "mathexpr/MathExpression.h"

#include <iostream>

int main()
{
    MathExpression expression(false, nullptr);
    for (const wchar_t* text : {L"2*(3+4)", L"sqrt(2)", L"[1,2,0]+[3,4,0]", L"m2cm(2)"})
    {
        VALTYPE value;
        if (!expression.setExpression(text) || !expression.evaluate(value))
            return 1;  // the user has seen why
        if (value.type == 0)
            std::cout << value.x << '\n';
        else
            std::cout << '[' << value.x << ',' << value.y << ',' << value.z << "]\n";
    }
    return 0;
}
