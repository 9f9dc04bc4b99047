// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserRegistrar.cpp - definitions with their checks, in the order in which they are made, and the look-ups.
#include "MTParserLib/MTParserRegistrar.h"

#include "platform/Platform.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr const wchar_t* registrarFile = L"MTParserLib/MTParserRegistrar";

[[noreturn]] void raise(std::uint32_t exID, std::wstring_view itemName, std::wstring_view conflictItemName)
{
    throw mathexpr::DefinitionException(__LINE__, 0, registrarFile,
                                        SMTDefExcepData{exID, std::wstring(itemName), std::wstring(conflictItemName)});
}

/// Adds this layer's entry to an exception that passes through, with the record of its newest entry.
void addOwnEntry(mathexpr::DefinitionException& exception, std::uint32_t line)
{
    const SMTDefExcepData data = exception.entries.front().data;
    exception.addEntry(line, 0, registrarFile, data);
}

bool contains(std::wstring_view text, std::wstring_view part)
{
    return text.find(part) != std::wstring_view::npos;
}

/// Makes room for one more, so that storing it afterwards cannot fail. Doubles, so that many definitions stay linear.
template <class Entry>
void reserveOneMore(std::vector<Entry>& entries)
{
    if (entries.size() == entries.capacity())
    {
        entries.reserve(2 * entries.size() + 1);
    }
}

/// The item with its deletion, if it is owned.
template <class Item>
std::shared_ptr<const Item> handleOf(Item* item, bool owned)
{
    return owned ? std::shared_ptr<const Item>(item) : std::shared_ptr<const Item>(item, [](const Item*) {});
}

}

/// What registrars may share.
struct MTParserRegistrar::Definitions
{
    struct Constant
    {
        std::wstring name;
        VALTYPE value;
    };

    std::vector<MTOperatorDefinition> operators;
    std::vector<MTFunctionDefinition> functions;
    MTNameIndex functionIndex;  // the first overload
    std::vector<Constant> constants;
    MTNameIndex constantIndex;
    bool everyNameIsPlain = true;  // of functions and constants
    bool hasHostItems = false;     // operators or functions that are known by their interface only
    SyntaxCharacters syntax;
    MTPlainCharacters plainCharacters;
    std::array<std::size_t, 128> firstOperator;  // whose symbol begins with an ASCII character

    void indexCharacters() noexcept;
    std::size_t firstOperatorWith(wchar_t character) const noexcept;
    template <class Entry>
    std::size_t findOtherSpelling(const std::vector<Entry>& entries, std::wstring Entry::*nameOf,
                                  std::wstring_view name) const noexcept;
};

/// Looks among all names, where the index knows none that is spelt alike, for one that the system takes for the same.
template <class Entry>
std::size_t MTParserRegistrar::Definitions::findOtherSpelling(const std::vector<Entry>& entries,
                                                              std::wstring Entry::*nameOf,
                                                              std::wstring_view name) const noexcept
{
    if (!platform::comparesLinguistically || (everyNameIsPlain && platform::isPlainName(name)))
    {
        return notFound;
    }
    const auto found =  // not covered: only where the system compares linguistically, which is Windows
        std::find_if(entries.begin(), entries.end(),
                     [&](const Entry& entry) { return platform::isSameName(entry.*nameOf, name); });
    return found == entries.end() ? notFound : static_cast<std::size_t>(found - entries.begin());
}

void MTParserRegistrar::Definitions::indexCharacters() noexcept
{
    plainCharacters = MTPlainCharacters();
    for (const wchar_t special : {L'(', L')', L'=', syntax.argumentSeparator})
    {
        plainCharacters.set(special, false);
    }
    firstOperator.fill(notFound);
    for (std::size_t index = operators.size(); index-- > 0;)
    {
        const wchar_t first = operators[index].symbol.front();
        plainCharacters.set(first, false);
        const auto isAlike = [first](const MTOperatorDefinition& other) { return other.symbol.front() == first; };
        const auto alike =
            std::find_if(operators.begin() + static_cast<std::ptrdiff_t>(index) + 1, operators.end(), isAlike);
        operators[index].nextAlike =
            alike == operators.end() ? notFound : static_cast<std::size_t>(alike - operators.begin());
        const auto code = static_cast<std::size_t>(first);
        if (code < firstOperator.size())
        {
            firstOperator[code] = index;
        }
    }
}

std::size_t MTParserRegistrar::Definitions::firstOperatorWith(wchar_t character) const noexcept
{
    const auto code = static_cast<std::size_t>(character);
    if (code < firstOperator.size())
    {
        return firstOperator[code];
    }
    const auto first = std::find_if(operators.begin(), operators.end(), [character](const MTOperatorDefinition& each) {
        return each.symbol.front() == character;
    });
    return first == operators.end() ? notFound : static_cast<std::size_t>(first - operators.begin());
}

MTParserRegistrar::MTParserRegistrar() : MTParserRegistrar(nullptr) {}

MTParserRegistrar::MTParserRegistrar(const MTParserRegistrar* prototype)
    : definitions(prototype != nullptr ? prototype->definitions : std::make_shared<Definitions>())
{
    if (prototype == nullptr)
    {
        definitions->indexCharacters();
    }
}

MTParserRegistrar::~MTParserRegistrar() = default;

MTParserRegistrar::Definitions& MTParserRegistrar::ownDefinitions()
{
    if (definitions.use_count() != 1)
    {
        definitions = std::make_shared<Definitions>(*definitions);
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

    const std::array<wchar_t, 4> all{decimalPoint, separator, opening, closing};
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
    for (const Definitions::Constant& entry : definitions->constants)
    {
        refuseIn(mathexpr::DefinitionError::ConstantContainsSyntaxCharacter, entry.name);
    }
    Definitions& own = ownDefinitions();
    own.syntax = characters;
    own.indexCharacters();
}

void MTParserRegistrar::defineOperator(IMathOperator* item, bool owned, const MTItemKernels& kernels)
{
    auto handle = handleOf(item, owned);
    std::wstring symbol = item->getSymbol();
    const std::int32_t precedence = item->getPrecedence();
    const bool unary = item->isUnaryOp();
    MTOperatorDefinition definition{std::move(handle), &kernels, std::move(symbol), precedence, unary, notFound};
    try
    {
        checkOperator(definition);
    }
    catch (mathexpr::DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }

    Definitions& own = ownDefinitions();
    const auto firstShorter =
        std::find_if(own.operators.begin(), own.operators.end(), [&](const MTOperatorDefinition& defined) {
            return defined.symbol.size() < definition.symbol.size();
        });
    own.hasHostItems = own.hasHostItems || isHostItem(kernels);
    own.operators.insert(firstShorter, std::move(definition));
    own.indexCharacters();
}

void MTParserRegistrar::checkOperator(const MTOperatorDefinition& definition) const
{
    const std::wstring& symbol = definition.symbol;
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
    for (const Definitions::Constant& constant : definitions->constants)
    {
        if (contains(constant.name, symbol))
        {
            raise(mathexpr::DefinitionError::ConstantContainsOperatorSymbol, symbol, constant.name);
        }
    }
}

void MTParserRegistrar::defineFunction(IMathFunction* item, bool owned, const MTItemKernels& kernels)
{
    auto handle = handleOf(item, owned);
    std::wstring symbol = item->getSymbol();
    const std::uint32_t nbArgs = item->getNbArgs();
    MTFunctionDefinition definition{std::move(handle), &kernels, std::move(symbol), nbArgs, notFound};
    checkFunction(definition);

    Definitions& own = ownDefinitions();
    const std::size_t index = own.functions.size();
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
    own.hasHostItems = own.hasHostItems || isHostItem(kernels);
    own.functions.push_back(std::move(definition));
}

void MTParserRegistrar::checkFunction(const MTFunctionDefinition& definition) const
{
    const std::wstring& symbol = definition.symbol;
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

void MTParserRegistrar::defineConstant(std::wstring_view name, const VALTYPE& value)
{
    checkConstant(name);

    Definitions& own = ownDefinitions();
    Definitions::Constant constant{std::wstring(name), value};
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

const SyntaxCharacters& MTParserRegistrar::getSyntax() const noexcept
{
    return definitions->syntax;
}

std::size_t MTParserRegistrar::getNbOperators() const noexcept
{
    return definitions->operators.size();
}

std::size_t MTParserRegistrar::getNbFunctions() const noexcept
{
    return definitions->functions.size();
}

std::size_t MTParserRegistrar::getNbConstants() const noexcept
{
    return definitions->constants.size();
}

const std::wstring& MTParserRegistrar::getConstantName(std::size_t index) const noexcept
{
    return definitions->constants[index].name;
}

const VALTYPE& MTParserRegistrar::getConstantValue(std::size_t index) const noexcept
{
    return definitions->constants[index].value;
}

const MTOperatorDefinition& MTParserRegistrar::getOperatorDefinition(std::size_t index) const noexcept
{
    return definitions->operators[index];
}

const MTFunctionDefinition& MTParserRegistrar::getFunctionDefinition(std::size_t index) const noexcept
{
    return definitions->functions[index];
}

bool MTParserRegistrar::callsHost() const noexcept
{
    return definitions->hasHostItems || hasHostVariables || !factoryMakesInPlace;
}

const MTPlainCharacters& MTParserRegistrar::getPlainCharacters() const noexcept
{
    return definitions->plainCharacters;
}

bool MTParserRegistrar::isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept
{
    if (text.empty())
    {
        return false;
    }
    const std::vector<MTOperatorDefinition>& operators = definitions->operators;
    for (std::size_t index = definitions->firstOperatorWith(text.front()); index != notFound;
         index = operators[index].nextAlike)
    {
        const std::wstring_view candidate = operators[index].symbol;
        if (candidate.size() == 1 || text.compare(0, candidate.size(), candidate) == 0)
        {
            symbol = candidate;
            return true;
        }
    }
    return false;
}

std::size_t MTParserRegistrar::findOperator(std::wstring_view symbol, bool unary) const noexcept
{
    if (symbol.empty())
    {
        return notFound;
    }
    const std::vector<MTOperatorDefinition>& operators = definitions->operators;
    for (std::size_t index = definitions->firstOperatorWith(symbol.front()); index != notFound;
         index = operators[index].nextAlike)
    {
        const std::wstring_view candidate = operators[index].symbol;
        if (operators[index].unary == unary && candidate.size() == symbol.size() &&
            (symbol.size() == 1 || candidate == symbol))
        {
            return index;
        }
    }
    return notFound;
}

std::size_t MTParserRegistrar::findFunction(std::wstring_view name) const noexcept
{
    const std::vector<MTFunctionDefinition>& functions = definitions->functions;
    const std::size_t found = definitions->functionIndex.find(
        MTNameIndex::hash(name), [&](std::size_t index) { return functions[index].symbol == name; });
    return found == notFound ? definitions->findOtherSpelling(functions, &MTFunctionDefinition::symbol, name) : found;
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

std::size_t MTParserRegistrar::findConstant(std::wstring_view name, std::uint32_t hash) const noexcept
{
    const std::vector<Definitions::Constant>& constants = definitions->constants;
    const std::size_t found =
        definitions->constantIndex.find(hash, [&](std::size_t index) { return constants[index].name == name; });
    return found == notFound ? definitions->findOtherSpelling(constants, &Definitions::Constant::name, name) : found;
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

MTVariableDefinition* MTParserRegistrar::findVariableDefinition(std::wstring_view name, std::uint32_t hash) noexcept
{
    const std::size_t found = findVariableIndex(name, hash);
    return found == notFound ? nullptr : &variables[found];
}

std::size_t MTParserRegistrar::findVariableIndex(std::wstring_view name, std::uint32_t hash) const noexcept
{
    return variableIndex.find(hash, [&](std::size_t index) { return sameIgnoringCase(variables[index].name, name); });
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

bool MTParserRegistrar::isNumber(std::wstring_view name) const noexcept
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
