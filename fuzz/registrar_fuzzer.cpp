// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// registrar_fuzzer.cpp - arbitrary definitions in any order, with any syntax characters. Accepted definitions are
// found, refused ones change nothing, and every item is deleted once.
#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "fuzz/FuzzInput.h"
#include "tests/unit/EngineItems.h"

#include <cstdlib>
#include <memory>
#include <tuple>

void showMessage(Message::Id)
{
    std::abort();  // a registrar throws, and never shows messages
}

namespace {

void expect(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

auto sizesOf(const MTParserRegistrar& registrar)
{
    return std::tuple(registrar.getNbOperators(), registrar.getNbFunctions(), registrar.getNbConstants(),
                      registrar.getNbVariables());
}

/// Makes a definition.
/// @return whether it was accepted
template <class Definition>
bool define(const MTParserRegistrar& registrar, Definition definition)
{
    const auto before = sizesOf(registrar);
    try
    {
        definition();
        return true;
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        expect(!exception.entries.empty());
        expect(sizesOf(registrar) == before);
        return false;
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    int nbMade = 0;
    int nbDeleted = 0;
    {
        MTParserRegistrar registrar;
        while (!input.isAtEnd())
        {
            const std::uint32_t what = input.below(6);
            const std::uint32_t number = input.below(7);
            const std::wstring name = input.name();
            switch (what)
            {
            case 0: {
                ++nbMade;
                auto* item = new TestOperator(name, number % 2 == 1, static_cast<std::int32_t>(number), &nbDeleted);
                if (define(registrar, [&] { registrar.defineOperator(item, true); }))
                {
                    const std::size_t found = registrar.findOperator(name, number % 2 == 1);
                    expect(found != MTParserRegistrar::notFound && &registrar.getOperator(found) == item);
                    std::wstring_view symbol;
                    expect(registrar.isOperatorSymbol(name, symbol) && symbol == name);
                }
                break;
            }
            case 1: {
                ++nbMade;
                auto* item = new TestFunction(name, number, &nbDeleted);
                if (define(registrar, [&] { registrar.defineFunction(item, true); }))
                {
                    const std::size_t found = registrar.findFunctionOverload(name, number);
                    expect(found != MTParserRegistrar::notFound && &registrar.getFunction(found) == item);
                }
                break;
            }
            case 2:
                if (define(registrar, [&] { registrar.defineConstant(name, VALTYPE{}); }))
                {
                    const std::size_t found = registrar.findConstant(name);
                    expect(found != MTParserRegistrar::notFound && registrar.getConstantName(found) == name);
                }
                break;
            case 3: {
                auto* item = new TestVariable(name);
                if (define(registrar, [&] { registrar.defineVariable(item); }))
                {
                    expect(registrar.findVariable(name) == item);
                }
                break;
            }
            case 4: {
                const bool known = registrar.findVariable(name) != nullptr;
                expect(registrar.removeVariable(name) == known);
                expect(registrar.findVariable(name) == nullptr);
                break;
            }
            default:
                if (name.size() >= 4)
                {
                    define(registrar, [&] { registrar.setSyntax({name[0], name[1], name[2], name[3]}); });
                }
                break;
            }
        }
    }
    expect(nbDeleted == nbMade);
    return 0;
}
