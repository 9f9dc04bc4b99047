// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserRegistrar.h - everything that a name in an expression can mean.
//
// One registrar keeps the operators, functions (with overloads), constants and variables of an expression object and
// the syntax characters of the language. Every definition is checked against everything defined before; a refused one
// raises DefinitionException and changes nothing. The compiler resolves every symbol and name through the look-ups,
// which build no string and walk no list: an index is kept as items are defined.
//
// Operators, functions, constants and syntax are shared between a prototype and the registrars made from it, and are
// copied by the first of them that defines something more. Items are stateless, so sharing them shows nowhere; it makes
// an expression object as cheap to construct as its variables.
#pragma once

#include "MTParserLib/names/MTDefinitions.h"
#include "MTParserLib/names/MTNameIndex.h"
#include "MTParserLib/program/MTFrame.h"
#include "mathexpr/IMathVariableFactory.h"
#include "mathexpr/SMTDefExcepData.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct MTVariableDefinition
{
    std::wstring name;
    std::unique_ptr<IMathVariable> item;
    /// The value, where evaluating the variable does nothing but copy it; null otherwise.
    const VALTYPE* valueInPlace;
    /// Whether the host gave the value when the variable was defined. Kept by the compiler, as the next ones.
    bool answeredByHost = false;
    /// The number of the compilation that used the variable last. Therefore a registrar serves one compiler.
    std::uint64_t lastUse = 0;
    /// In the program of that compilation, where the variable has a value in place.
    MTPlace input = noPlace;
};

/// The precedence of a function that waits for its bracket to be closed. No operator may reach it.
inline constexpr std::int32_t functionPrecedence = 5;

class MTParserRegistrar
{
public:
    /// What an index look-up answers when there is nothing.
    static constexpr std::size_t notFound = MTNameIndex::notFound;

    /// A registrar that knows nothing.
    MTParserRegistrar();
    /// A registrar with everything that the prototype has but its variables and its factory.
    explicit MTParserRegistrar(const MTParserRegistrar* prototype);
    MTParserRegistrar(const MTParserRegistrar&) = delete;
    MTParserRegistrar& operator=(const MTParserRegistrar&) = delete;

    /// Deletes the variables, and the operators and functions that it owns and shares with no other.
    virtual ~MTParserRegistrar();

    /// The factory that defineVariable(name) asks; not owned.
    /// @param inPlace  whether evaluating a variable that it makes does nothing but copy the value at its address
    void setVariableFactory(IMathVariableFactory* factory, bool inPlace = false) noexcept;

    /// Codes 0, 1, 2, 5, 9, 20.
    void setSyntax(const SyntaxCharacters& characters);
    const SyntaxCharacters& getSyntax() const noexcept { return definitions->syntax; }

    /// An item handed over with owned = true belongs to the registrar from the call on, and is deleted when it is
    /// refused. Codes 3, 4, 5, 6, 10, 21.
    void defineOperator(IMathOperator* item, bool owned);
    /// As defineOperator. Codes 7, 8, 9, 10.
    void defineFunction(IMathFunction* item, bool owned);
    /// Defines all operators and functions of the vocabulary, without a check. The registrar knows none before.
    void defineVocabulary(MTVocabulary&& given);
    /// Codes 17 to 22.
    void defineConstant(std::wstring_view name, const VALTYPE& value);
    /// Takes the variable, and deletes it when it is refused. Codes 11 to 15; code 12 also where it has no value slot.
    void defineVariable(IMathVariable* item, bool inPlace = false);
    /// Defines a variable that the factory makes. Codes 11 to 15; code 12 also where the factory makes none, or one
    /// without a value slot.
    void defineVariable(std::wstring_view name);
    /// Deletes a variable; a program that uses it must not be evaluated any more. False when there is none.
    bool removeVariable(std::wstring_view name);

    std::size_t getNbOperators() const noexcept { return definitions->operators.size(); }
    std::size_t getNbFunctions() const noexcept { return definitions->functions.size(); }
    std::size_t getNbConstants() const noexcept { return definitions->constants.size(); }
    std::size_t getNbVariables() const noexcept { return variables.size(); }

    /// Operators, the longest symbol first; among symbols of one length in the order of definition.
    const IMathOperator& getOperator(std::size_t index) const noexcept { return *getOperatorDefinition(index).item; }
    /// Functions, in the order of definition.
    const IMathFunction& getFunction(std::size_t index) const noexcept { return *getFunctionDefinition(index).item; }
    const std::wstring& getConstantName(std::size_t index) const noexcept { return definitions->constants[index].name; }
    const VALTYPE& getConstantValue(std::size_t index) const noexcept { return definitions->constants[index].value; }

    /// A definition stays where it is until the next one of its kind.
    const MTOperatorDefinition& getOperatorDefinition(std::size_t index) const noexcept
    {
        return definitions->operators[index];
    }
    const MTFunctionDefinition& getFunctionDefinition(std::size_t index) const noexcept
    {
        return definitions->functions[index];
    }
    const MTVariableDefinition& getVariableDefinition(std::size_t index) const noexcept { return variables[index]; }

    /// Whether a program may come to run code of the host's: an item or a variable of a class that is not the
    /// library's, defined already or made by the factory later.
    bool callsHost() const noexcept;

    /// Which characters can only be part of a name or number.
    const MTPlainCharacters& getPlainCharacters() const noexcept { return definitions->plainCharacters; }
    /// Whether the text begins with the symbol of an operator; the longest that matches wins.
    /// @param symbol  receives the symbol, valid as long as no operator is defined
    bool isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept;
    /// The same as the index of the first operator with that symbol.
    std::size_t findOperatorAt(std::wstring_view text) const noexcept { return definitions->findOperatorAt(text); }
    std::size_t findOperator(std::wstring_view symbol, bool unary) const noexcept;
    /// The same, starting from what findOperatorAt answered.
    std::size_t findOperatorFrom(std::size_t first, bool unary) const noexcept
    {
        return definitions->findOperatorFrom(first, definitions->operators[first].symbol, unary);
    }

    /// The first function defined under that name, whatever its argument count.
    std::size_t findFunction(std::wstring_view name) const noexcept { return definitions->findFunction(name); }
    /// The overload for a number of arguments. An exact count wins over a function that takes any number; that one
    /// needs at least one argument, but for "point".
    std::size_t findFunctionOverload(std::wstring_view name, std::uint32_t nbArgs) const noexcept;
    /// The same, starting from what findFunction answered.
    std::size_t findOverload(std::size_t firstOverload, std::uint32_t nbArgs) const noexcept;

    std::size_t findConstant(std::wstring_view name) const noexcept;
    /// The same for a caller that has computed MTNameIndex::hash(name).
    std::size_t findConstant(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        return definitions->findConstant(name, hash);
    }
    /// Null when there is none; names of variables are compared without regard to case.
    IMathVariable* findVariable(std::wstring_view name) const noexcept;
    MTVariableDefinition* findVariableDefinition(std::wstring_view name) noexcept;
    MTVariableDefinition* findVariableDefinition(std::wstring_view name, std::uint32_t hash) noexcept
    {
        const std::size_t found = findVariableIndex(name, hash);
        return found == notFound ? nullptr : &variables[found];
    }
    const MTVariableDefinition* findVariableDefinition(std::wstring_view name) const noexcept;
    /// Where the variable's value is held. Code 16 when there is no such variable.
    VALTYPE* getVariableValuePtr(std::wstring_view name) const;

    /// Whether the name reads as a number: digits with at most one decimal point.
    bool isNumber(std::wstring_view name) const noexcept
    {
        const wchar_t decimalPoint = definitions->syntax.decimalPoint;
        bool pointSeen = false;
        for (const wchar_t character : name)
        {
            const bool isPoint = character == decimalPoint;
            if (isPoint ? pointSeen : (character < L'0' || character > L'9'))
            {
                return false;
            }
            pointSeen = pointSeen || isPoint;
        }
        return !name.empty();
    }

private:
    /// The definitions, copied first if another registrar shares them.
    MTDefinitions& ownDefinitions();

    void checkOperator(const MTOperatorDefinition& definition) const;
    void checkFunction(const MTFunctionDefinition& definition) const;
    void checkConstant(std::wstring_view name) const;
    void checkVariable(std::wstring_view name) const;

    std::size_t findVariableIndex(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        return variableIndex.find(hash,
                                  [&](std::size_t index) { return sameIgnoringCase(variables[index].name, name); });
    }
    std::size_t findSyntaxCharacter(std::wstring_view name) const noexcept;
    bool findOperatorSymbolIn(std::wstring_view name, std::wstring_view& symbol) const noexcept;

    std::shared_ptr<MTDefinitions> definitions;

    std::vector<MTVariableDefinition> variables;
    MTNameIndex variableIndex;
    IMathVariableFactory* variableFactory = nullptr;
    bool factoryMakesInPlace = true;  // also where there is none
    bool hasHostVariables = false;    // or has had some
};
