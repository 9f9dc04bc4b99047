// host_names.cpp - answers names out of the host's own data, here the dimensions of a drawing.
#include "mathexpr/IMathExprService.h"
#include "mathexpr/MathExpression.h"
#include "mathexpr/Variables.h"

#include <iostream>
#include <map>
#include <string>

class Drawing : public IMathExprService
{
public:
    std::map<std::wstring, VALTYPE> dimensions;

    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        const auto found = dimensions.find(name);
        if (found == dimensions.end())
            return false;
        value = found->second;
        return true;
    }
};

int main()
{
    Drawing drawing;
    drawing.dimensions[L"length"].x = 12;
    drawing.dimensions[L"corner"] = VALTYPE{1, 0, 0, 0, 1, 2, 3};

    MathExpression expression(false, &drawing);
    VALTYPE value;
    if (!expression.setExpression(L"corner*length+[0.5,0,0]") || !expression.evaluate(value))
        return 1;
    std::cout << value.x << ' ' << value.y << ' ' << value.z << '\n';

    // The host is asked once for each name. A dimension that changes is passed on, or removed to be asked for again.
    ExpressionVariables variables(expression);
    drawing.dimensions[L"length"].x = 10;
    variables.set(L"length", drawing.dimensions[L"length"]);
    if (!expression.evaluate(value))
        return 1;
    std::cout << value.x << ' ' << value.y << ' ' << value.z << '\n';
    return 0;
}
