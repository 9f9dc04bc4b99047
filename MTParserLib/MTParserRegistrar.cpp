// MTParserRegistrar.cpp - definitions with their checks, in the order in which they are made, and the look-ups.
#include "MTParserLib/MTParserRegistrar.h"

#include "platform/Platform.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr const wchar_t* sourceFile = L"MTParserLib/MTParserRegistrar";

/// Adds this layer's entry to an exception that passes through, with the record of its newest entry.
void addOwnEntry(DefinitionException& exception, std::uint32_t line)
{
    const SMTDefExcepData data = exception.entries.front().data;
    exception.addEntry(line, 0, sourceFile, data);
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

}

void MTParserRegistrar::setSyntax(const SyntaxCharacters& characters)
{
    const auto [decimalPoint, separator, opening, closing] = characters;
    const auto name = [](const wchar_t& character) { return std::wstring_view(&character, 1); };

    if (separator == decimalPoint)
    {
        raise(DefinitionError::SeparatorIsDecimalPoint, name(separator), name(decimalPoint));
    }
    if (separator == opening || separator == closing)
    {
        raise(DefinitionError::SeparatorIsPointBracket, name(separator),
              name(separator == opening ? opening : closing));
    }
    if (decimalPoint == opening || decimalPoint == closing)
    {
        raise(DefinitionError::DecimalPointIsPointBracket, {}, {});
    }

    const std::array<wchar_t, 4> all{decimalPoint, separator, opening, closing};
    const auto refuseIn = [&](std::uint32_t exID, std::wstring_view defined) {
        const std::size_t at = defined.find_first_of(all.data(), 0, all.size());
        if (at != std::wstring_view::npos)
        {
            raise(exID, defined, defined.substr(at, 1));
        }
    };
    for (const OperatorEntry& entry : operators)
    {
        refuseIn(DefinitionError::OperatorContainsSyntaxCharacter, entry.symbol);
    }
    for (const FunctionEntry& entry : functions)
    {
        refuseIn(DefinitionError::FunctionContainsSyntaxCharacter, entry.symbol);
    }
    for (const ConstantEntry& entry : constants)
    {
        refuseIn(DefinitionError::ConstantContainsSyntaxCharacter, entry.name);
    }
    syntax = characters;
}

void MTParserRegistrar::defineOperator(IMathOperator* item, bool owned)
{
    ItemPtr<IMathOperator> handle(item, ReleaseOwned{owned});
    OperatorEntry entry{std::move(handle), item->getSymbol(), item->isUnaryOp()};
    try
    {
        checkOperator(entry);
    }
    catch (DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }

    reserveOneMore(operatorsByFirstCharacter);
    const auto firstShorter = std::find_if(operators.begin(), operators.end(), [&](const OperatorEntry& defined) {
        return defined.symbol.size() < entry.symbol.size();
    });
    operators.insert(firstShorter, std::move(entry));
    indexOperators();
}

void MTParserRegistrar::checkOperator(const OperatorEntry& entry) const
{
    const std::wstring& symbol = entry.symbol;
    if (symbol.empty())
    {
        raise(DefinitionError::OperatorSymbolEmpty, {}, {});
    }
    // 5 belongs to function calls.
    if (entry.item->getPrecedence() >= 5)
    {
        raise(DefinitionError::OperatorPrecedenceTooHigh, symbol, {});
    }
    if (findOperator(symbol, entry.unary) != notFound)
    {
        raise(DefinitionError::OperatorAlreadyDefined, symbol, symbol);
    }
    const std::size_t at = findSyntaxCharacter(symbol);
    if (at != std::wstring_view::npos)
    {
        raise(DefinitionError::OperatorContainsSyntaxCharacter, symbol, symbol.substr(at, 1));
    }
    for (const FunctionEntry& function : functions)
    {
        if (contains(function.symbol, symbol))
        {
            raise(DefinitionError::FunctionContainsOperatorSymbol, symbol, function.symbol);
        }
    }
    for (const ConstantEntry& constant : constants)
    {
        if (contains(constant.name, symbol))
        {
            raise(DefinitionError::ConstantContainsOperatorSymbol, symbol, constant.name);
        }
    }
}

void MTParserRegistrar::indexOperators() noexcept
{
    operatorsByFirstCharacter.resize(operators.size());
    std::iota(operatorsByFirstCharacter.begin(), operatorsByFirstCharacter.end(), 0U);
    const auto classOf = [this](std::uint32_t index) { return firstCharacterClass(operators[index].symbol.front()); };
    std::sort(operatorsByFirstCharacter.begin(), operatorsByFirstCharacter.end(),
              [&](std::uint32_t left, std::uint32_t right) {
                  return classOf(left) != classOf(right) ? classOf(left) < classOf(right) : left < right;
              });

    operatorRanges.fill(Range{});
    for (std::uint32_t at = 0; at < operatorsByFirstCharacter.size(); ++at)
    {
        Range& range = operatorRanges[classOf(operatorsByFirstCharacter[at])];
        if (range.last == 0)
        {
            range.first = at;
        }
        range.last = at + 1;
    }
}

void MTParserRegistrar::defineFunction(IMathFunction* item, bool owned)
{
    ItemPtr<IMathFunction> handle(item, ReleaseOwned{owned});
    FunctionEntry entry{std::move(handle), item->getSymbol(), item->getNbArgs(), notFound};
    checkFunction(entry);

    reserveOneMore(functions);
    const auto [named, isNew] = functionsByName.try_emplace(entry.symbol, functions.size());
    if (!isNew)
    {
        std::size_t last = named->second;
        while (functions[last].nextOverload != notFound)
        {
            last = functions[last].nextOverload;
        }
        functions[last].nextOverload = functions.size();
    }
    functions.push_back(std::move(entry));
}

void MTParserRegistrar::checkFunction(const FunctionEntry& entry) const
{
    const std::wstring& symbol = entry.symbol;
    if (symbol.empty())
    {
        raise(DefinitionError::FunctionSymbolEmpty, {}, {});
    }
    for (std::size_t at = findFunction(symbol); at != notFound; at = functions[at].nextOverload)
    {
        if (functions[at].nbArgs == entry.nbArgs)
        {
            raise(DefinitionError::FunctionAlreadyDefined, symbol, symbol);
        }
    }
    const std::size_t at = findSyntaxCharacter(symbol);
    if (at != std::wstring_view::npos)
    {
        raise(DefinitionError::FunctionContainsSyntaxCharacter, symbol, symbol.substr(at, 1));
    }
    std::wstring_view operatorSymbol;
    if (findOperatorSymbolIn(symbol, operatorSymbol))
    {
        raise(DefinitionError::FunctionContainsOperatorSymbol, symbol, operatorSymbol);
    }
}

void MTParserRegistrar::defineConstant(std::wstring_view name, const VALTYPE& value)
{
    if (name.empty())
    {
        raise(DefinitionError::ConstantNameEmpty, {}, {});
    }
    if (findConstant(name) != notFound)
    {
        raise(DefinitionError::ConstantAlreadyDefined, name, name);
    }
    if (isNumber(name))
    {
        raise(DefinitionError::ConstantNameIsNumber, name, {});
    }
    const std::size_t at = findSyntaxCharacter(name);
    if (at != std::wstring_view::npos)
    {
        raise(DefinitionError::ConstantContainsSyntaxCharacter, name, name.substr(at, 1));
    }
    std::wstring_view operatorSymbol;
    if (findOperatorSymbolIn(name, operatorSymbol))
    {
        raise(DefinitionError::ConstantContainsOperatorSymbol, name, operatorSymbol);
    }
    const auto variable = variables.find(name);
    if (variable != variables.end())
    {
        raise(DefinitionError::ConstantNameIsVariable, name, variable->first);
    }

    ConstantEntry entry{std::wstring(name), value};
    reserveOneMore(constants);
    constantsByName.try_emplace(entry.name, constants.size());
    constants.push_back(std::move(entry));
}

void MTParserRegistrar::defineVariable(IMathVariable* item)
{
    std::unique_ptr<IMathVariable> variable(item);
    try
    {
        std::wstring name = item->getSymbol();
        checkVariable(name);
        variables.emplace(std::move(name), std::move(variable));
    }
    catch (DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }
}

void MTParserRegistrar::defineVariable(std::wstring_view name)
{
    try
    {
        IMathVariable* variable =
            variableFactory == nullptr ? nullptr : variableFactory->create(std::wstring(name).c_str());
        if (variable == nullptr)
        {
            raise(DefinitionError::VariableNameEmpty, name, {});
        }
        defineVariable(variable);
    }
    catch (DefinitionException& exception)
    {
        addOwnEntry(exception, __LINE__);
        throw;
    }
}

void MTParserRegistrar::checkVariable(std::wstring_view name) const
{
    if (name.empty())
    {
        raise(DefinitionError::VariableNameEmpty, {}, {});
    }
    const auto variable = variables.find(name);
    if (variable != variables.end())
    {
        raise(DefinitionError::VariableAlreadyDefined, name, variable->first);
    }
    if (isNumber(name))
    {
        raise(DefinitionError::VariableNameIsNumber, name, {});
    }
    if (findConstant(name) != notFound)
    {
        raise(DefinitionError::VariableNameIsConstant, name, name);
    }
    const std::size_t at = findSyntaxCharacter(name);
    if (at != std::wstring_view::npos)
    {
        raise(DefinitionError::VariableContainsSyntaxCharacter, name, name.substr(at, 1));
    }
}

bool MTParserRegistrar::isOperatorSymbol(std::wstring_view text, std::wstring_view& symbol) const noexcept
{
    if (text.empty())
    {
        return false;
    }
    const Range range = operatorRanges[firstCharacterClass(text.front())];
    for (std::uint32_t at = range.first; at < range.last; ++at)
    {
        const std::wstring_view candidate = operators[operatorsByFirstCharacter[at]].symbol;
        if (text.substr(0, candidate.size()) == candidate)
        {
            symbol = candidate;
            return true;
        }
    }
    return false;
}

std::size_t MTParserRegistrar::findOperator(std::wstring_view symbol, bool unary) const
{
    if (symbol.empty())
    {
        return notFound;
    }
    const Range range = operatorRanges[firstCharacterClass(symbol.front())];
    for (std::uint32_t at = range.first; at < range.last; ++at)
    {
        const std::uint32_t index = operatorsByFirstCharacter[at];
        if (operators[index].unary == unary && operators[index].symbol == symbol)
        {
            return index;
        }
    }
    return notFound;
}

std::size_t MTParserRegistrar::findFunction(std::wstring_view name) const
{
    const auto named = functionsByName.find(name);
    return named == functionsByName.end() ? notFound : named->second;
}

std::size_t MTParserRegistrar::findFunctionOverload(std::wstring_view name, std::uint32_t nbArgs) const
{
    return findOverload(findFunction(name), nbArgs);
}

std::size_t MTParserRegistrar::findOverload(std::size_t firstOverload, std::uint32_t nbArgs) const
{
    std::size_t candidate = notFound;
    for (std::size_t at = firstOverload; at != notFound; at = functions[at].nextOverload)
    {
        const FunctionEntry& entry = functions[at];
        if (entry.nbArgs == NB_ARGS_UNDEFINED)
        {
            if (nbArgs > 0 || entry.symbol == L"point")
            {
                candidate = at;
            }
        }
        else if (entry.nbArgs == nbArgs)
        {
            return at;
        }
    }
    return candidate;
}

std::size_t MTParserRegistrar::findConstant(std::wstring_view name) const
{
    const auto named = constantsByName.find(name);
    return named == constantsByName.end() ? notFound : named->second;
}

IMathVariable* MTParserRegistrar::findVariable(std::wstring_view name) const
{
    const auto variable = variables.find(name);
    return variable == variables.end() ? nullptr : variable->second.get();
}

VALTYPE* MTParserRegistrar::getVariableValuePtr(std::wstring_view name) const
{
    IMathVariable* variable = findVariable(name);
    if (variable == nullptr)
    {
        raise(DefinitionError::VariableNotDefined, name, {});
    }
    return variable->getValuePtr();
}

bool MTParserRegistrar::isNumber(std::wstring_view name) const noexcept
{
    bool pointSeen = false;
    for (const wchar_t character : name)
    {
        const bool isPoint = character == syntax.decimalPoint;
        if (isPoint ? pointSeen : (character < L'0' || character > L'9'))
        {
            return false;
        }
        pointSeen = pointSeen || isPoint;
    }
    return !name.empty();
}

bool MTParserRegistrar::VariableOrder::operator()(std::wstring_view left, std::wstring_view right) const noexcept
{
    return platform::compareIgnoringCase(left, right) < 0;
}

std::size_t MTParserRegistrar::firstCharacterClass(wchar_t character) noexcept
{
    const auto code = static_cast<std::size_t>(character);
    return code < asciiCharacters ? code : asciiCharacters;
}

bool MTParserRegistrar::isSyntaxCharacter(wchar_t character) const noexcept
{
    return character == syntax.decimalPoint || character == syntax.argumentSeparator ||
           character == syntax.pointOpeningBracket || character == syntax.pointClosingBracket;
}

std::size_t MTParserRegistrar::findSyntaxCharacter(std::wstring_view name) const noexcept
{
    const auto found = std::find_if(name.begin(), name.end(), [this](wchar_t c) { return isSyntaxCharacter(c); });
    return found == name.end() ? std::wstring_view::npos : static_cast<std::size_t>(found - name.begin());
}

bool MTParserRegistrar::findOperatorSymbolIn(std::wstring_view name, std::wstring_view& symbol) const noexcept
{
    for (std::size_t at = 0; at < name.size(); ++at)
    {
        if (isOperatorSymbol(name.substr(at), symbol))
        {
            return true;
        }
    }
    return false;
}

void MTParserRegistrar::raise(std::uint32_t exID, std::wstring_view itemName, std::wstring_view conflictItemName)
{
    throw DefinitionException(__LINE__, 0, sourceFile,
                              SMTDefExcepData{exID, std::wstring(itemName), std::wstring(conflictItemName)});
}
