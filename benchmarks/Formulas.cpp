// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Formulas.cpp - the list of formulas.
#include "benchmarks/Formulas.h"

namespace {

/// A degree-15 polynomial by Horner's rule: "((0.16*x+0.15)*x+0.14)...".
std::string polynomialText()
{
    std::string text = "0.16";
    for (const char* coefficient : {"0.15", "0.14", "0.13", "0.12", "0.11", "0.1", "0.09", "0.08", "0.07", "0.06",
                                    "0.05", "0.04", "0.03", "0.02", "0.01"})
    {
        const bool innermost = text == "0.16";
        text = (innermost ? text : "(" + text + ")") + "*x+" + coefficient;
    }
    return text;
}

std::string flatText()
{
    std::string text = "x+1";
    for (int term = 2; term <= 50; ++term)
    {
        text += "+x+" + std::to_string(term);
    }
    return text;
}

std::string nestedText()
{
    std::string text = "x";
    for (int level = 0; level < 100; ++level)
    {
        text = "(" + text + "+x)";
    }
    return text;
}

const std::string distanceText = "sqrt((px-qx)*(px-qx)+(py-qy)*(py-qy)+(pz-qz)*(pz-qz))";

/// A formula of numbers whose text all engines accept unchanged.
Formula common(const std::string& title, const std::string& variables, const std::string& text,
               Formula::NativeNumber native)
{
    return {title, variables, text, native, {"", {text}}, "", "", native};
}

Formula common(const std::string& variables, const std::string& text, Formula::NativeNumber native)
{
    return common(text, variables, text, native);
}

std::vector<Formula> makeFormulas()
{
    std::vector<Formula> list{
        common("x", "x+1", native::increment),
        common("abr", "a*b+r", native::multiplyAdd),
        common("xy", "(x+y)*(x-y)/2", native::differenceOfSquares),
        common("abxyz", "((x*2+y)*3-z)/(a+b*2)", native::nestedArithmetic),
        common("xyz", "sqrt(x^2+y^2+z^2)", native::lengthByPowers),
        common("xyz", "sqrt(x*x+y*y+z*z)", native::lengthByProducts),
        common("xyr", "sin(x)*r+cos(y)*r", native::trigonometry),
        common("abxyz", "min(a,b)*max(x,y)+abs(z)", native::extremes),
        common("abxy", "(x>y)*a+(x<=y)*b", native::comparisons),
        common("polynomial of degree 15", "x", polynomialText(), native::polynomial),
        common("", "2*3+4*5-6/7", native::constants),
        common("x+1+x+2+..., 100 terms", "x", flatText(), native::flatSum),
        common("(...+x), 100 levels", "x", nestedText(), native::nestedSum),
        {"p+q*2", "pq", "p+q*2", native::pointArithmetic, {"", {"px+qx*2", "py+qy*2", "pz+qz*2"}}, "", "", nullptr},
        {"dist(p,q)", "pq", "dist(p,q)", native::distance, {"", {distanceText}}, "", "", nullptr},
        {"vec1(p,q)*r",
         "pqr",
         "vec1(p,q)*r",
         native::direction,
         {distanceText, {"(qx-px)/len*r", "(qy-py)/len*r", "(qz-pz)/len*r"}},
         "",
         "",
         nullptr},
        {"p&q",
         "pq",
         "p&q",
         native::crossProduct,
         {"", {"py*qz-pz*qy", "pz*qx-px*qz", "px*qy-py*qx"}},
         "",
         "",
         nullptr},
        common("xy", "m2f(x)+f2m(y)", native::conversions),
        {"[x,y,x+y]", "xy", "[x,y,x+y]", native::packing, {"", {"x", "y", "x+y"}}, "", "", nullptr},
    };

    for (Formula& formula : list)
    {
        if (formula.text == "sin(x)*r+cos(y)*r")
        {
            formula.scalar.parts = {"sin(x*3.14159265359/180)*r+cos(y*3.14159265359/180)*r"};
            formula.sameTextNative = native::trigonometryInRadians;
        }
        else if (formula.text == "(x>y)*a+(x<=y)*b")
        {
            formula.withoutTruthValues = "(x>y?1:0)*a+(x<=y?1:0)*b";
            formula.lua = "(x>y and 1 or 0)*a+(x<=y and 1 or 0)*b";
        }
    }
    return list;
}

}

const std::vector<Formula>& formulas()
{
    static const std::vector<Formula> list = makeFormulas();
    return list;
}
