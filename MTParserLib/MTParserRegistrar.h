// MTParserRegistrar.h - everything that a name in an expression can mean.
//
// One registrar keeps the operators, functions (with overloads), constants and variables of an expression object and
// the syntax characters of the language. Every definition is checked against everything defined before; a refused one
// raises DefinitionException and changes nothing. The compiler resolves every symbol and name through the look-ups,
// which build no string and walk no list: an index is kept as items are defined.
#pragma once

#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "mathexpr/IMathVariableFactory.h"
#include "mathexpr/SMTDefExcepData.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The syntax characters of the language.
struct SyntaxCharacters
{
    wchar_t decimalPoint = L'\0';
    wchar_t argumentSeparator = L'\0';
    wchar_t pointOpeningBracket = L'\0';
    wchar_t pointClosingBracket = L'\0';
};

class MTParserRegistrar
{
public:
    /// What an index look-up answers when there is nothing.
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);

    MTParserRegistrar() = default;
    MTParserRegistrar(const MTParserRegistrar&) = delete;
    MTParserRegistrar& operator=(const MTParserRegistrar&) = delete;

    /// Deletes the operators and functions that it owns, and every variable.
    virtual ~MTParserRegistrar() = default;

    /// The factory that defineVariable(name) asks; not owned.
    void setVariableFactory(IMathVariableFactory* factory) noexcept { variableFactory = factory; }

    /// Codes 0, 1, 2, 5, 9, 20.
    void setSyntax(const SyntaxCharacters& characters);
    const SyntaxCharacters& getSyntax() const noexcept { return syntax; }

    /// An item handed over with owned = true belongs to the registrar from the call on, and is deleted when it is
    /// refused. Codes 3, 4, 5, 6, 10, 21.
    void defineOperator(IMathOperator* item, bool owned);
    /// As defineOperator. Codes 7, 8, 9, 10.
    void defineFunction(IMathFunction* item, bool owned);
    /// Codes 17 to 22.
    void defineConstant(std::wstring_view name, const VALTYPE& value);
    /// Takes the variable, and deletes it when it is refused. Codes 11 to 15.
    void defineVariable(IMathVariable* item);
    /// Defines a variable that the factory makes. Codes 11 to 15; code 12 also where the factory makes none.
    void defineVariable(std::wstring_view name);

    std::size_t getNbOperators() const noexcept { return operators.size(); }
    std::size_t getNbFunctions() const noexcept { return functions.size(); }
    std::size_t getNbConstants() const noexcept { return constants.size(); }

    /// Operators, the longest symbol first; among symbols of one length in the order of definition.
    const IMathOperator& getOperator(std::size_t index) const { return *operators[index].item; }
    /// Functions in the order of definition.
    const IMathFunction& getFunction(std::size_t index) const { return *functions[index].item; }
    const std::wstring& getConstantName(std::size_t index) const { return constants[index].name; }
    const VALTYPE& getConstantValue(std::size_t index) const { return constants[index].value; }

    /// Whether the text begins with the symbol of an operator; the longest that matches wins.
    /// @param symbol  receives the symbol, valid as long as no operator is defined
    bool isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept;
    std::size_t findOperator(std::wstring_view symbol, bool unary) const;

    /// The first function defined under that name, whatever its argument count.
    std::size_t findFunction(std::wstring_view name) const;
    /// The overload for a number of arguments. An exact count wins over a function that takes any number; that one
    /// needs at least one argument, but for "point".
    std::size_t findFunctionOverload(std::wstring_view name, std::uint32_t nbArgs) const;
    /// The same, starting from what findFunction answered.
    std::size_t findOverload(std::size_t firstOverload, std::uint32_t nbArgs) const;

    std::size_t findConstant(std::wstring_view name) const;
    /// Null when there is none; names of variables are compared without regard to case.
    IMathVariable* findVariable(std::wstring_view name) const;
    /// Where the variable's value is held. Code 16 when there is no such variable.
    VALTYPE* getVariableValuePtr(std::wstring_view name) const;

    /// Whether the name reads as a number: digits with at most one decimal point.
    bool isNumber(std::wstring_view name) const noexcept;

private:
    struct ReleaseOwned
    {
        bool owned;
        void operator()(const IMathExprItemEvaluator* item) const
        {
            if (owned)
            {
                delete item;
            }
        }
    };
    template <class Item>
    using ItemPtr = std::unique_ptr<Item, ReleaseOwned>;

    struct OperatorEntry
    {
        ItemPtr<IMathOperator> item;
        std::wstring symbol;
        bool unary;
    };
    struct FunctionEntry
    {
        ItemPtr<IMathFunction> item;
        std::wstring symbol;
        std::uint32_t nbArgs;
        std::size_t nextOverload;
    };
    struct ConstantEntry
    {
        std::wstring name;
        VALTYPE value;
    };

    struct NameHash
    {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view name) const noexcept { return std::hash<std::wstring_view>{}(name); }
    };
    using NameIndex = std::unordered_map<std::wstring, std::size_t, NameHash, std::equal_to<>>;

    struct VariableOrder
    {
        using is_transparent = void;
        bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
    };

    void checkOperator(const OperatorEntry& entry) const;
    void checkFunction(const FunctionEntry& entry) const;
    void checkVariable(std::wstring_view name) const;
    void indexOperators() noexcept;

    bool isSyntaxCharacter(wchar_t character) const noexcept;
    std::size_t findSyntaxCharacter(std::wstring_view name) const noexcept;
    bool findOperatorSymbolIn(std::wstring_view name, std::wstring_view& symbol) const noexcept;
    [[noreturn]] static void raise(std::uint32_t exID, std::wstring_view itemName, std::wstring_view conflictItemName);

    // For each ASCII character, the operators whose symbols begin with it are operators[first] to operators[last - 1]
    // of operatorsByFirstCharacter; every other character shares the last entry.
    struct Range
    {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };
    static constexpr std::size_t asciiCharacters = 128;
    static std::size_t firstCharacterClass(wchar_t character) noexcept;

    std::vector<OperatorEntry> operators;
    std::array<Range, asciiCharacters + 1> operatorRanges;
    std::vector<std::uint32_t> operatorsByFirstCharacter;

    std::vector<FunctionEntry> functions;
    NameIndex functionsByName;  // the first overload

    std::map<std::wstring, std::unique_ptr<IMathVariable>, VariableOrder> variables;

    std::vector<ConstantEntry> constants;
    NameIndex constantsByName;

    SyntaxCharacters syntax;
    IMathVariableFactory* variableFactory = nullptr;
};
