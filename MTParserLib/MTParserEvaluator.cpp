// MTParserEvaluator.cpp - one pass over the records; each writes straight into the slot that consumes it.
#include "MTParserLib/MTParserEvaluator.h"

bool runProgram(const MTParserProgram& program, bool showMessages)
{
    if (program.records.back().kind == MTProgramRecord::Kind::Constant)
    {
        return true;
    }
    for (const MTProgramRecord& record : program.records)
    {
        if (!record.item->evaluate(record.nbArgs, record.args, *record.destination, showMessages))
        {
            return false;
        }
    }
    return true;
}
