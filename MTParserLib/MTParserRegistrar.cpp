// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserRegistrar.cpp - definitions, each with its checks in their order, and the look-ups.
#include "MTParserLib/MTParserRegistrar.h"

#include "MTParserLib/program/MTItemKernels.h"
#include "platform/Platform.h"

#include <array>
#include <utility>

namespace {

constexpr const wchar_t* registrarFile = L"MTParserLib/MTParserRegistrar";

[[noreturn]] void raise(std::uint32_t exID, std::wstring_view itemName, std::wstring_view conflictItemName)
{
    throw mathexpr::DefinitionException(__LINE__, 0, registrarFile,
                                        SMTDefExcepData{exID, std::wstring(itemName), std::wstring(conflictItemName)});
}

/// Adds an entry of this layer to a passing exception, with the record of its newest entry.
void addOwnEntry(mathexpr::DefinitionException& exception, std::uint32_t line)
{
    const SMTDefExcepData data = exception.entries.front().data;
    exception.addEntry(line, 0, registrarFile, data);
}

bool contains(std::wstring_view text, std::wstring_view part)
{
    return text.find(part) != std::wstring_view::npos;
}

/// Reserves memory for one more entry, so that storing it cannot fail. Capacity doubles, so many definitions take
/// linear time.
template <class Entry>
void reserveOneMore(std::vector<Entry>& entries)
{
    if (entries.size() == entries.capacity())
    {
        entries.reserve(2 * entries.size() + 1);
    }
}

/// An item of the host with its symbol. If owned, it is deleted with its last definition.
template <class Item>
struct HostItem
{
    std::unique_ptr<const Item> owned;
    std::wstring symbol;
};

template <class Item>
std::shared_ptr<const HostItem<Item>> hostItemOf(const Item* item, bool owned)
{
    std::unique_ptr<const Item> handle(owned ? item : nullptr);
    return std::make_shared<const HostItem<Item>>(HostItem<Item>{std::move(handle), item->getSymbol()});
}

}

MTParserRegistrar::MTParserRegistrar() : MTParserRegistrar(nullptr) {}

MTParserRegistrar::MTParserRegistrar(const MTParserRegistrar* prototype)
    : definitions(prototype != nullptr ? prototype->definitions : std::make_shared<MTDefinitions>())
{}

MTParserRegistrar::~MTParserRegistrar() = default;

MTDefinitions& MTParserRegistrar::ownDefinitions()
{
    if (definitions.use_count() != 1)
    {
        definitions = std::make_shared<MTDefinitions>(*definitions);
    }
    return *definitions;
}

void MTParserRegistrar::setVariableFactory(IMathVariableFactory* factory, bool inPlace) noexcept
{
    variableFactory = factory;
    factoryMakesInPlace = inPlace;
}

void MTParserRegistrar::setSyntax(const SyntaxCharacters& characters)
{
    const auto [decimalPoint, separator, opening, closing] = characters;
    const auto name = [](const wchar_t& character) { return std::wstring_view(&character, 1); };

    if (separator == decimalPoint)
    {
        raise(mathexpr::DefinitionError::SeparatorIsDecimalPoint, name(separator), name(decimalPoint));
    }
    if (separator == opening || separator == closing)
    {
        raise(mathexpr::DefinitionError::SeparatorIsPointBracket, name(separator),
              name(separator == opening ? opening : closing));
    }
    if (decimalPoint == opening || decimalPoint == closing)
    {
        raise(mathexpr::DefinitionError::DecimalPointIsPointBracket, {}, {});
    }

    const std::array all{decimalPoint, separator, opening, closing};
    const auto refuseIn = [&](std::uint32_t exID, std::wstring_view defined) {
        const std::size_t at = defined.find_first_of(all.data(), 0, all.size());
        if (at != std::wstring_view::npos)
        {
            raise(exID, defined, defined.substr(at, 1));
        }
    };
    for (const MTOperatorDefinition& entry : definitions->operators)
    {
        refuseIn(mathexpr::DefinitionError::OperatorContainsSyntaxCharacter, entry.symbol);
    }
    for (const MTFunctionDefinition& entry : definitions->functions)
    {
        refuseIn(mathexpr::DefinitionError::FunctionContainsSyntaxCharacter, entry.symbol);
    }
    for (const MTConstantDefinition& entry : definitions->constants)
    {
        refuseIn(mathexpr::DefinitionError::ConstantContainsSyntaxCharacter, entry.name);
    }
    MTDefinitions& own = ownDefinitions();
    own.syntax = characters;
    own.indexCharacters();
}

void MTParserRegistrar::defineOperator(IMathOperator* item, bool owned)
{
    auto host = hostItemOf(item, owned);
    MTOperatorDefinition definition{item, &virtualKernels, host->symbol, item->getPrecedence(), item->isUnaryOp()};
    try
    {
        checkOperator(definition);
    }
    catch (mathexpr::DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }

    MTDefinitions& own = ownDefinitions();
    reserveOneMore(own.owned);
    own.hasHostItems = true;
    own.insertOperator(definition);
    own.owned.push_back(std::move(host));
    own.indexCharacters();
}

void MTParserRegistrar::checkOperator(const MTOperatorDefinition& definition) const
{
    const std::wstring_view symbol = definition.symbol;
    if (symbol.empty())
    {
        raise(mathexpr::DefinitionError::OperatorSymbolEmpty, {}, {});
    }
    if (definition.precedence >= functionPrecedence)
    {
        raise(mathexpr::DefinitionError::OperatorPrecedenceTooHigh, symbol, {});
    }
    if (findOperator(symbol, definition.unary) != notFound)
    {
        raise(mathexpr::DefinitionError::OperatorAlreadyDefined, symbol, symbol);
    }
    const std::size_t at = findSyntaxCharacter(symbol);
    if (at != std::wstring_view::npos)
    {
        raise(mathexpr::DefinitionError::OperatorContainsSyntaxCharacter, symbol, symbol.substr(at, 1));
    }
    for (const MTFunctionDefinition& function : definitions->functions)
    {
        if (contains(function.symbol, symbol))
        {
            raise(mathexpr::DefinitionError::FunctionContainsOperatorSymbol, symbol, function.symbol);
        }
    }
    for (const MTConstantDefinition& constant : definitions->constants)
    {
        if (contains(constant.name, symbol))
        {
            raise(mathexpr::DefinitionError::ConstantContainsOperatorSymbol, symbol, constant.name);
        }
    }
}

void MTParserRegistrar::defineFunction(IMathFunction* item, bool owned)
{
    auto host = hostItemOf(item, owned);
    MTFunctionDefinition definition{item, &virtualKernels, host->symbol, item->getNbArgs()};
    checkFunction(definition);

    MTDefinitions& own = ownDefinitions();
    const std::size_t index = own.functions.size();
    reserveOneMore(own.owned);
    reserveOneMore(own.functions);
    own.functionIndex.reserveOneMore(index);
    std::size_t last = findFunction(definition.symbol);
    if (last == notFound)
    {
        own.functionIndex.insert(MTNameIndex::hash(definition.symbol), index);
    }
    else
    {
        while (own.functions[last].nextOverload != notFound)
        {
            last = own.functions[last].nextOverload;
        }
        own.functions[last].nextOverload = index;
    }
    own.everyNameIsPlain = own.everyNameIsPlain && platform::isPlainName(definition.symbol);
    own.hasHostItems = true;
    own.functions.push_back(definition);
    own.owned.push_back(std::move(host));
}

void MTParserRegistrar::checkFunction(const MTFunctionDefinition& definition) const
{
    const std::wstring_view symbol = definition.symbol;
    if (symbol.empty())
    {
        raise(mathexpr::DefinitionError::FunctionSymbolEmpty, {}, {});
    }
    for (std::size_t at = findFunction(symbol); at != notFound; at = definitions->functions[at].nextOverload)
    {
        if (definitions->functions[at].nbArgs == definition.nbArgs)
        {
            raise(mathexpr::DefinitionError::FunctionAlreadyDefined, symbol, symbol);
        }
    }
    const std::size_t at = findSyntaxCharacter(symbol);
    if (at != std::wstring_view::npos)
    {
        raise(mathexpr::DefinitionError::FunctionContainsSyntaxCharacter, symbol, symbol.substr(at, 1));
    }
    std::wstring_view operatorSymbol;
    if (findOperatorSymbolIn(symbol, operatorSymbol))
    {
        raise(mathexpr::DefinitionError::FunctionContainsOperatorSymbol, symbol, operatorSymbol);
    }
}

void MTParserRegistrar::defineVocabulary(MTVocabulary&& given)
{
    MTDefinitions& own = ownDefinitions();
    own.operators.reserve(given.operators.size());
    reserveOneMore(own.owned);
    for (const MTOperatorDefinition& definition : given.operators)
    {
        own.insertOperator(definition);
    }
    own.functions = std::move(given.functions);
    own.functionIndex = std::move(given.functionIndex);
    own.owned.push_back(std::move(given.items));
    own.indexCharacters();
}

void MTParserRegistrar::defineConstant(std::wstring_view name, const VALTYPE& value)
{
    checkConstant(name);

    MTDefinitions& own = ownDefinitions();
    MTConstantDefinition constant{std::wstring(name), value};
    reserveOneMore(own.constants);
    own.constantIndex.reserveOneMore(own.constants.size());
    own.constantIndex.insert(MTNameIndex::hash(name), own.constants.size());
    own.everyNameIsPlain = own.everyNameIsPlain && platform::isPlainName(name);
    own.constants.push_back(std::move(constant));
}

void MTParserRegistrar::checkConstant(std::wstring_view name) const
{
    if (name.empty())
    {
        raise(mathexpr::DefinitionError::ConstantNameEmpty, {}, {});
    }
    if (findConstant(name) != notFound)
    {
        raise(mathexpr::DefinitionError::ConstantAlreadyDefined, name, name);
    }
    if (isNumber(name))
    {
        raise(mathexpr::DefinitionError::ConstantNameIsNumber, name, {});
    }
    const std::size_t at = findSyntaxCharacter(name);
    if (at != std::wstring_view::npos)
    {
        raise(mathexpr::DefinitionError::ConstantContainsSyntaxCharacter, name, name.substr(at, 1));
    }
    std::wstring_view operatorSymbol;
    if (findOperatorSymbolIn(name, operatorSymbol))
    {
        raise(mathexpr::DefinitionError::ConstantContainsOperatorSymbol, name, operatorSymbol);
    }
    if (const MTVariableDefinition* variable = findVariableDefinition(name))
    {
        raise(mathexpr::DefinitionError::ConstantNameIsVariable, name, variable->name);
    }
}

void MTParserRegistrar::defineVariable(IMathVariable* item, bool inPlace)
{
    std::unique_ptr<IMathVariable> handle(item);
    try
    {
        const VALTYPE* const value = item->getValuePtr();
        MTVariableDefinition definition{item->getSymbol(), std::move(handle), inPlace ? value : nullptr};
        checkVariable(definition.name);
        if (value == nullptr)
        {
            raise(mathexpr::DefinitionError::VariableNameEmpty, definition.name, {});
        }
        reserveOneMore(variables);
        variableIndex.reserveOneMore(variables.size());
        variableIndex.insert(MTNameIndex::hash(definition.name), variables.size());
        hasHostVariables = hasHostVariables || !inPlace;
        variables.push_back(std::move(definition));
    }
    catch (mathexpr::DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }
}

void MTParserRegistrar::defineVariable(std::wstring_view name)
{
    try
    {
        IMathVariable* item =
            variableFactory == nullptr ? nullptr : variableFactory->create(std::wstring(name).c_str());
        if (item == nullptr)
        {
            raise(mathexpr::DefinitionError::VariableNameEmpty, name, {});
        }
        defineVariable(item, factoryMakesInPlace);
    }
    catch (mathexpr::DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }
}

void MTParserRegistrar::checkVariable(std::wstring_view name) const
{
    if (name.empty())
    {
        raise(mathexpr::DefinitionError::VariableNameEmpty, {}, {});
    }
    if (const MTVariableDefinition* variable = findVariableDefinition(name))
    {
        raise(mathexpr::DefinitionError::VariableAlreadyDefined, name, variable->name);
    }
    if (isNumber(name))
    {
        raise(mathexpr::DefinitionError::VariableNameIsNumber, name, {});
    }
    if (findConstant(name) != notFound)
    {
        raise(mathexpr::DefinitionError::VariableNameIsConstant, name, name);
    }
    const std::size_t at = findSyntaxCharacter(name);
    if (at != std::wstring_view::npos)
    {
        raise(mathexpr::DefinitionError::VariableContainsSyntaxCharacter, name, name.substr(at, 1));
    }
}

bool MTParserRegistrar::removeVariable(std::wstring_view name)
{
    const MTVariableDefinition* removed = findVariableDefinition(name);
    if (removed == nullptr)
    {
        return false;
    }
    variables.erase(variables.begin() + (removed - variables.data()));
    variableIndex.clear();
    for (std::size_t index = 0; index < variables.size(); ++index)
    {
        variableIndex.insert(MTNameIndex::hash(variables[index].name), index);
    }
    return true;
}

bool MTParserRegistrar::callsHost() const noexcept
{
    return definitions->hasHostItems || hasHostVariables || !factoryMakesInPlace;
}

bool MTParserRegistrar::isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept
{
    const std::size_t found = findOperatorAt(text);
    if (found == notFound)
    {
        return false;
    }
    symbol = definitions->operators[found].symbol;
    return true;
}

std::size_t MTParserRegistrar::findOperator(std::wstring_view symbol, bool unary) const noexcept
{
    return symbol.empty()
               ? notFound
               : definitions->findOperatorFrom(definitions->firstOperatorWith(symbol.front()), symbol, unary);
}

std::size_t MTParserRegistrar::findFunctionOverload(std::wstring_view name, std::uint32_t nbArgs) const noexcept
{
    return findOverload(findFunction(name), nbArgs);
}

std::size_t MTParserRegistrar::findOverload(std::size_t firstOverload, std::uint32_t nbArgs) const noexcept
{
    std::size_t candidate = notFound;
    for (std::size_t index = firstOverload; index != notFound; index = definitions->functions[index].nextOverload)
    {
        const MTFunctionDefinition& function = definitions->functions[index];
        if (function.nbArgs == NB_ARGS_UNDEFINED)
        {
            if (nbArgs > 0 || function.symbol == L"point")
            {
                candidate = index;
            }
        }
        else if (function.nbArgs == nbArgs)
        {
            return index;
        }
    }
    return candidate;
}

std::size_t MTParserRegistrar::findConstant(std::wstring_view name) const noexcept
{
    return findConstant(name, MTNameIndex::hash(name));
}

IMathVariable* MTParserRegistrar::findVariable(std::wstring_view name) const noexcept
{
    const MTVariableDefinition* definition = findVariableDefinition(name);
    return definition == nullptr ? nullptr : definition->item.get();
}

const MTVariableDefinition* MTParserRegistrar::findVariableDefinition(std::wstring_view name) const noexcept
{
    const std::size_t found = findVariableIndex(name, MTNameIndex::hash(name));
    return found == notFound ? nullptr : &variables[found];
}

MTVariableDefinition* MTParserRegistrar::findVariableDefinition(std::wstring_view name) noexcept
{
    return findVariableDefinition(name, MTNameIndex::hash(name));
}

VALTYPE* MTParserRegistrar::getVariableValuePtr(std::wstring_view name) const
{
    IMathVariable* variable = findVariable(name);
    if (variable == nullptr)
    {
        raise(mathexpr::DefinitionError::VariableNotDefined, name, {});
    }
    return variable->getValuePtr();
}

std::size_t MTParserRegistrar::findSyntaxCharacter(std::wstring_view name) const noexcept
{
    const auto [decimalPoint, separator, opening, closing] = definitions->syntax;
    const std::array all{decimalPoint, separator, opening, closing};
    return name.find_first_of(all.data(), 0, all.size());
}

bool MTParserRegistrar::findOperatorSymbolIn(std::wstring_view name, std::wstring_view& symbol) const noexcept
{
    for (; !name.empty(); name.remove_prefix(1))
    {
        if (isOperatorSymbol(name, symbol))
        {
            return true;
        }
    }
    return false;
}
