// ProgramDump.cpp - names each slot by the record that writes it, or by the constant that it holds.
#include "tests/program/ProgramDump.h"

#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "mathexpr/IMathVariable.h"

#include <array>
#include <charconv>
#include <sstream>

namespace {

std::string number(double value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::string(text.data(), end);
}

std::string valueText(const VALTYPE& value)
{
    std::string text = number(value.x);
    if (value.type == 1)
    {
        text = "[" + text + "," + number(value.y) + "," + number(value.z) + "]";
    }
    return value.flag == 1 ? text + " flagged" : text;
}

std::string itemText(const IMathExprItemEvaluator& item)
{
    const auto ascii = [](const std::wstring& text) { return std::string(text.begin(), text.end()); };
    if (const auto* anOperator = dynamic_cast<const IMathOperator*>(&item))
    {
        return (anOperator->isUnaryOp() ? "unary " : "operator ") + ascii(anOperator->getSymbol());
    }
    if (const auto* function = dynamic_cast<const IMathFunction*>(&item))
    {
        return "function " + ascii(function->getHelpString());
    }
    return "variable " + ascii(dynamic_cast<const IMathVariable&>(item).getSymbol());
}

}

std::string dumpProgram(const MTParserProgram& program)
{
    std::ostringstream dump;
    const auto& records = program.records;
    const auto writerOf = [&](const VALTYPE* slot) {
        std::size_t writer = 0;
        while (writer < records.size() && records[writer].destination != slot)
        {
            ++writer;
        }
        return writer;
    };
    for (std::size_t index = 0; index < records.size(); ++index)
    {
        const MTProgramRecord& record = records[index];
        dump << index << ' ';
        if (record.kind == MTProgramRecord::Kind::Constant)
        {
            dump << "constant " << valueText(record.value) << " at " << record.position << '\n';
            continue;
        }
        dump << itemText(*record.item) << " at " << record.position;
        for (std::uint32_t j = 0; j < record.nbArgs; ++j)
        {
            const VALTYPE* slot = record.args + j;
            const std::size_t writer = writerOf(slot);
            dump << (j == 0 ? " [" : ", ");
            dump << (writer < records.size() ? "#" + std::to_string(writer) : valueText(*slot));
        }
        dump << (record.nbArgs > 0 ? "]" : "");
        dump << (record.destination == &record.value ? " -> value" : "") << '\n';
    }
    return dump.str();
}
