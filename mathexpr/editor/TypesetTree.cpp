// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypesetTree.cpp - the compiler's operator stack, on top of a stack of nodes; MTParserCompiler.h explains the rules.
// As there, a closed call stays on the stack like an operator, and an operator takes the topmost operands when it is
// popped, whichever brackets contained them.
#include "mathexpr/editor/TypesetTree.h"

#include "mathexpr/editor/UnitNames.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace mathexpr::editor {
namespace {

class TreeReader
{
public:
    TreeReader(const TextReading& givenReading, const MTParserRegistrar& givenRegistrar)
        : reading(givenReading), registrar(givenRegistrar)
    {}

    /// @return whether the text is an expression; if so, the tree contains it
    bool read()
    {
        for (const TextToken& token : reading.tokens())
        {
            if (token.kind != TokenKind::Blank && !take(token))
            {
                return false;
            }
        }
        if (expectsValue)
        {
            return false;
        }
        emitDownToWall();
        if (!waiting.empty())
        {
            return false;
        }
        for (auto target = targets.rbegin(); target != targets.rend(); ++target)
        {
            const std::uint32_t name = addLeaf(TypesetNode::Kind::Name, *target);
            operands.back() = add(typesetAssignment, {name, operands.back()});
        }
        add(typesetFormula, {operands.back()});
        return true;
    }

    TypesetTree tree;

private:
    struct Waiting
    {
        enum class Kind : std::uint8_t
        {
            Wall,
            Operator,
            Call,
        };

        Kind kind = Kind::Wall;
        std::int32_t precedence = 0;
        bool isUnary = false;
        std::wstring text{};            // the operator's symbol or the function's name
        std::size_t argumentCount = 0;  // number of complete arguments
        std::size_t firstArgument = 0;  // index of the first argument in operands
    };

    static constexpr std::int32_t callPrecedence = 5;
    static constexpr std::uint32_t placeholder = 0xFFFFFFFF;  // marks the arguments of a call

    bool take(const TextToken& token)
    {
        switch (token.kind)
        {
        case TokenKind::Number:
            return takeValue(TypesetNode::Kind::Number, reading.textOf(token));
        case TokenKind::Constant:
            return takeValue(TypesetNode::Kind::Constant, reading.textOf(token));
        case TokenKind::Variable:
        case TokenKind::HostName:
        case TokenKind::UnknownName:
            return takeValue(TypesetNode::Kind::Name, reading.textOf(token));
        case TokenKind::Function:
            beginCall(reading.textOf(token));
            return expectsValue;
        case TokenKind::Operator:
            return takeOperator(reading.textOf(token));
        case TokenKind::Separator:
            return endArgument();
        case TokenKind::AssignedName:
            targets.push_back(reading.textOf(token));
            assignsTo = true;
            return expectsValue;
        case TokenKind::AssignmentSign:
            return std::exchange(assignsTo, false);
        case TokenKind::Bracket:
        case TokenKind::Shorthand:
            return takeSign(reading.typed()[token.start]);
        default:
            return false;
        }
    }

    /// Reads a bracket, or "e+" as "*10^".
    bool takeSign(wchar_t character)
    {
        switch (character)
        {
        case L'[':
            beginCall(L"point");
            return openBracket();
        case L'(':
            return openBracket();
        case L'e':
            return takePowerOfTen();
        default:
            return closeBracket();
        }
    }

    bool takePowerOfTen()
    {
        if (!takeOperator(L"*"))
        {
            return false;
        }
        takeValue(TypesetNode::Kind::Number, L"10");
        return takeOperator(L"^");
    }

    bool takeValue(TypesetNode::Kind kind, std::wstring text)
    {
        operands.push_back(addLeaf(kind, std::move(text)));
        return std::exchange(expectsValue, false);
    }

    void beginCall(std::wstring function)
    {
        operands.push_back(placeholder);
        Waiting call;
        call.kind = Waiting::Kind::Call;
        call.precedence = callPrecedence;
        call.text = std::move(function);
        call.firstArgument = operands.size();
        waiting.push_back(std::move(call));
    }

    bool openBracket()
    {
        waiting.emplace_back();
        return expectsValue;
    }

    /// Ends an argument, at a separator or closing bracket.
    bool endArgument()
    {
        if (expectsValue)
        {
            return false;
        }
        emitDownToWall();
        if (waiting.empty())
        {
            return false;
        }
        expectsValue = true;
        const bool isInCall = waiting.size() > 1 && waiting[waiting.size() - 2].kind == Waiting::Kind::Call;
        if (isInCall)
        {
            ++waiting[waiting.size() - 2].argumentCount;
        }
        return isInCall || ++waiting.back().argumentCount == 1;
    }

    bool closeBracket()
    {
        if (!endArgument())
        {
            return false;
        }
        waiting.pop_back();
        expectsValue = false;
        return true;
    }

    bool takeOperator(const std::wstring& symbol)
    {
        const std::size_t index = registrar.findOperator(symbol, expectsValue);
        if (index == MTParserRegistrar::notFound)
        {
            return false;
        }
        Waiting added;
        added.kind = Waiting::Kind::Operator;
        added.precedence = registrar.getOperatorDefinition(index).precedence;
        added.isUnary = std::exchange(expectsValue, true);
        added.text = symbol;
        const bool staysUnderEqual =
            !waiting.empty() && waiting.back().isUnary && waiting.back().precedence == added.precedence;
        const auto leaves = [&](const Waiting& top) {
            return added.precedence < top.precedence || (added.precedence == top.precedence && !staysUnderEqual);
        };
        while (!waiting.empty() && waiting.back().kind != Waiting::Kind::Wall && leaves(waiting.back()))
        {
            if (!emit())
            {
                return false;
            }
        }
        waiting.push_back(std::move(added));
        return true;
    }

    /// Called after a value. Every operator has its operands then, since values outnumber binary operators by one.
    void emitDownToWall()
    {
        while (!waiting.empty() && waiting.back().kind != Waiting::Kind::Wall)
        {
            emit();
        }
    }

    /// Pops the topmost record and makes a node of it.
    bool emit()
    {
        const Waiting top = std::move(waiting.back());
        waiting.pop_back();
        const bool isCall = top.kind == Waiting::Kind::Call;
        const std::size_t partCount = isCall ? top.argumentCount : top.isUnary ? 1 : 2;
        const std::size_t available = isCall ? operands.size() - top.firstArgument : operands.size();
        if (isCall ? partCount != available : partCount > available)
        {
            return false;
        }
        const std::vector<std::uint32_t> parts(operands.end() - static_cast<std::ptrdiff_t>(partCount), operands.end());
        operands.resize(operands.size() - partCount - (isCall ? 1 : 0));
        if (std::find(parts.begin(), parts.end(), placeholder) != parts.end())
        {
            return false;
        }
        operands.push_back(isCall ? addCall(top.text, parts) : add(formOfOperator(top.text, top.isUnary), parts));
        return true;
    }

    std::uint32_t addCall(const std::wstring& function, const std::vector<std::uint32_t>& arguments)
    {
        const VocabularyUnit* const from = unitOfArgument(function);
        const VocabularyUnit* const to = unitOfResult(function);
        if (from != nullptr && to != nullptr && arguments.size() == 1)
        {
            const std::uint32_t fromUnit = addLeaf(TypesetNode::Kind::Words, from->singular);
            const std::uint32_t toUnit = addLeaf(TypesetNode::Kind::Words, to->singular);
            return add(typesetConversion, {arguments.front(), fromUnit, toUnit});
        }
        return add(formOfCall(function, arguments.size()), arguments, function);
    }

    std::uint32_t addLeaf(TypesetNode::Kind kind, std::wstring text)
    {
        tree.nodes.push_back({kind, std::move(text), nullptr, {}});
        return static_cast<std::uint32_t>(tree.nodes.size() - 1);
    }

    std::uint32_t add(const TypesetForm& form, std::vector<std::uint32_t> parts, std::wstring name = {})
    {
        tree.nodes.push_back({TypesetNode::Kind::Construct, std::move(name), &form, std::move(parts)});
        return static_cast<std::uint32_t>(tree.nodes.size() - 1);
    }

    const TextReading& reading;
    const MTParserRegistrar& registrar;
    std::vector<std::wstring> targets;  // names that are assigned to
    std::vector<Waiting> waiting;
    std::vector<std::uint32_t> operands;
    bool expectsValue = true;
    bool assignsTo = false;  // the assignment sign follows
};

}

TypesetTree readTypesetTree(const TextReading& reading, const MTParserRegistrar& registrar)
{
    TreeReader reader(reading, registrar);
    if (!reader.read())
    {
        reader.tree.nodes.clear();
        reader.tree.nodes.push_back(
            {TypesetNode::Kind::Construct, std::wstring(reading.typed()), &typesetVerbatim, {}});
        reader.tree.nodes.push_back({TypesetNode::Kind::Construct, {}, &typesetFormula, {0}});
    }
    return std::move(reader.tree);
}

}
