// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserRegistrar.h - the registry of operators, functions, constants and variables.
//
// A registrar holds the operators, functions (with overloads), constants and variables of an expression object, and the
// syntax characters of the language. Every definition is checked against all earlier ones; a refused one raises
// DefinitionException and changes nothing. The compiler resolves symbols and names through the look-ups, which use
// indexes that are maintained by the definitions: they build no string and scan no list.
//
// A prototype shares operators, functions, constants and syntax with the registrars made from it. A registrar copies
// them before its first own definition (copy on write). Items are stateless, so sharing has no visible effect; it makes
// creating an expression object cheap.
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
    /// The value, if evaluating the variable only copies it; otherwise null.
    const VALTYPE* valueInPlace;
    /// Whether the host supplied the value. Maintained by the compiler, like the next two members.
    bool answeredByHost = false;
    /// Number of the last compilation that used the variable. A registrar therefore serves one compiler.
    std::uint64_t lastUse = 0;
    /// Its input in the program of that compilation, if its value is read in place.
    MTPlace input = noPlace;
};

/// The precedence of a function that waits for its closing bracket. Operators must have a lower one.
inline constexpr std::int32_t functionPrecedence = 5;

class MTParserRegistrar
{
public:
    /// Result of an index look-up that finds nothing.
    static constexpr std::size_t notFound = MTNameIndex::notFound;

    /// Creates an empty registrar.
    MTParserRegistrar();
    /// Creates a registrar with everything that the prototype has, except variables and factory.
    explicit MTParserRegistrar(const MTParserRegistrar* prototype);
    MTParserRegistrar(const MTParserRegistrar&) = delete;
    MTParserRegistrar& operator=(const MTParserRegistrar&) = delete;

    /// Deletes the variables, and the operators and functions that it owns and does not share.
    virtual ~MTParserRegistrar();

    /// Sets the factory that defineVariable(name) uses; not owned.
    /// @param inPlace  whether evaluating its variables only copies the value at their address
    void setVariableFactory(IMathVariableFactory* factory, bool inPlace = false) noexcept;

    /// Error codes 0, 1, 2, 5, 9, 20.
    void setSyntax(const SyntaxCharacters& characters);
    const SyntaxCharacters& getSyntax() const noexcept { return definitions->syntax; }

    /// With owned = true the registrar takes ownership in any case, and deletes the item if it refuses it. Error codes
    /// 3, 4, 5, 6, 10, 21.
    void defineOperator(IMathOperator* item, bool owned);
    /// As defineOperator. Error codes 7, 8, 9, 10.
    void defineFunction(IMathFunction* item, bool owned);
    /// Defines all operators and functions of the vocabulary, unchecked. The registrar must have none.
    void defineVocabulary(MTVocabulary&& given);
    /// Error codes 17 to 22.
    void defineConstant(std::wstring_view name, const VALTYPE& value);
    /// Takes ownership of the variable, and deletes it if it refuses it. Error codes 11 to 15; code 12 also if it has
    /// no value slot.
    void defineVariable(IMathVariable* item, bool inPlace = false);
    /// Defines a variable that the factory creates. Error codes 11 to 15; code 12 also if the factory creates none, or
    /// one without a value slot.
    void defineVariable(std::wstring_view name);
    /// Deletes a variable. Programs that use it must not be evaluated any more. Returns false if there is none.
    bool removeVariable(std::wstring_view name);

    std::size_t getNbOperators() const noexcept { return definitions->operators.size(); }
    std::size_t getNbFunctions() const noexcept { return definitions->functions.size(); }
    std::size_t getNbConstants() const noexcept { return definitions->constants.size(); }
    std::size_t getNbVariables() const noexcept { return variables.size(); }

    /// Operators, the longest symbol first; symbols of the same length in the order of definition.
    const IMathOperator& getOperator(std::size_t index) const noexcept { return *getOperatorDefinition(index).item; }
    /// Functions in the order of definition.
    const IMathFunction& getFunction(std::size_t index) const noexcept { return *getFunctionDefinition(index).item; }
    const std::wstring& getConstantName(std::size_t index) const noexcept { return definitions->constants[index].name; }
    const VALTYPE& getConstantValue(std::size_t index) const noexcept { return definitions->constants[index].value; }

    /// The reference is valid until the next definition of the same kind.
    const MTOperatorDefinition& getOperatorDefinition(std::size_t index) const noexcept
    {
        return definitions->operators[index];
    }
    const MTFunctionDefinition& getFunctionDefinition(std::size_t index) const noexcept
    {
        return definitions->functions[index];
    }
    const MTVariableDefinition& getVariableDefinition(std::size_t index) const noexcept { return variables[index]; }

    /// Whether evaluating can run code of the host: an item or a variable of a class that is not the library's, already
    /// defined or created by the factory later.
    bool callsHost() const noexcept;

    /// The characters that can only be part of a name or number.
    const MTPlainCharacters& getPlainCharacters() const noexcept { return definitions->plainCharacters; }
    /// Whether the text begins with an operator's symbol; the longest match wins.
    /// @param symbol  receives the symbol, valid until an operator is defined
    bool isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept;
    /// The index of the first operator with the longest matching symbol.
    std::size_t findOperatorAt(std::wstring_view text) const noexcept { return definitions->findOperatorAt(text); }
    std::size_t findOperator(std::wstring_view symbol, bool unary) const noexcept;
    /// The unary or binary operator with that symbol, starting from the result of findOperatorAt.
    std::size_t findOperatorFrom(std::size_t first, bool unary) const noexcept
    {
        return definitions->findOperatorFrom(first, definitions->operators[first].symbol, unary);
    }

    /// The first function defined under the name, whatever its argument count.
    std::size_t findFunction(std::wstring_view name) const noexcept { return definitions->findFunction(name); }
    /// The overload for an argument count. An exact match wins over a function with any number of arguments; the latter
    /// needs at least one argument, except "point".
    std::size_t findFunctionOverload(std::wstring_view name, std::uint32_t nbArgs) const noexcept;
    /// The same, starting from the result of findFunction.
    std::size_t findOverload(std::size_t firstOverload, std::uint32_t nbArgs) const noexcept;

    std::size_t findConstant(std::wstring_view name) const noexcept;
    /// The same, with a precomputed MTNameIndex::hash(name).
    std::size_t findConstant(std::wstring_view name, std::uint32_t hash) const noexcept
    {
        return definitions->findConstant(name, hash);
    }
    /// Null if there is none; names of variables ignore case.
    IMathVariable* findVariable(std::wstring_view name) const noexcept;
    MTVariableDefinition* findVariableDefinition(std::wstring_view name) noexcept;
    MTVariableDefinition* findVariableDefinition(std::wstring_view name, std::uint32_t hash) noexcept
    {
        const std::size_t found = findVariableIndex(name, hash);
        return found == notFound ? nullptr : &variables[found];
    }
    const MTVariableDefinition* findVariableDefinition(std::wstring_view name) const noexcept;
    /// The address of the variable's value. Error code 16 if there is no such variable.
    VALTYPE* getVariableValuePtr(std::wstring_view name) const;

    /// Whether the name is a number: digits with at most one decimal point.
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
    /// The definitions, copied first if they are shared.
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
    bool factoryMakesInPlace = true;  // also if there is no factory
    bool hasHostVariables = false;    // now or earlier
};
