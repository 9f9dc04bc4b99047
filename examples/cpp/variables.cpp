// variables.cpp - compiles once and evaluates often: a variable's value is changed where it stands.
#include "mathexpr/Variables.h"
#include "mathexpr/MathExpression.h"

#include <iostream>
#include <string>

int main()
{
    MathExpression expression(false, nullptr);
    ExpressionVariables variables(expression);
    variables.set(L"width", VALTYPE());
    variables.set(L"height", VALTYPE{0, 0, 0, 0, 2.5, 0, 0});
    if (!expression.setExpression(L"width*height+1"))
        return 1;

    for (const std::wstring& name : variables.usedNames())
        std::cout << "reads " << std::string(name.begin(), name.end()) << '\n';

    VALTYPE* width = variables.address(L"width");
    for (width->x = 1; width->x <= 4; width->x += 1)
    {
        VALTYPE area;
        if (!expression.evaluate(area))
            return 1;
        std::cout << width->x << " -> " << area.x << '\n';
    }
    return 0;
}
