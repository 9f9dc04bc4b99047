// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// JsonReport.h - answers for scripts: one JSON object per line on standard output.
#pragma once

#include "tools/calc/answer/Answer.h"

void reportJson(const Answer& answer);
