// PlainReport.h - answers for people: values on standard output, failures on standard error.
#pragma once

#include "tools/calc/Answer.h"

#include <string>

/// One value a line; what went wrong, when the expression failed.
void reportPlain(const Answer& answer);

/// What went wrong, for an answer that failed: a line for each message, and for an exception a sentence.
std::string failureText(const Answer& answer);
