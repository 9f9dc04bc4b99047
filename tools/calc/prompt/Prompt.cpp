// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Prompt.cpp - connects the line reader with the session.
#include "tools/calc/prompt/Prompt.h"

#include "tools/calc/prompt/LineEditor.h"
#include "tools/calc/prompt/PromptSession.h"
#include "tools/calc/settings/StateFolder.h"
#include "tools/calc/terminal/Interrupt.h"
#include "tools/calc/terminal/Terminal.h"

#include <iostream>

void runPrompt(const Options& options, Calculator& calculator)
{
    noteEveryInterrupt();
    const bool welcome = coloursWelcome();
    PromptSession session(options, calculator);
    session.keepSettingsIn(stateFile("settings"));
    LineEditorHooks hooks;
    hooks.complete = [&](std::string_view before, std::string_view after) {
        return complete(calculator.expression(), &calculator.hostNotes(), before, after);
    };
    hooks.signature = [&](std::string_view before) { return signatureAt(calculator.expression(), before); };

    std::cout << "mathexpr " MATHEXPR_VERSION ". :help tells more, Ctrl-D leaves.\n" << std::flush;
    std::unique_ptr<LineReader> reader = makeLineEditor(std::move(hooks));
    if (!reader)
    {
        reader = makePlainReader();
    }
    while (const std::optional<std::string> line = reader->readLine())
    {
        takeInterrupt();
        TerminalStyle style;
        style.columns = terminalColumns();
        style.coloured = welcome && standardErrorIsTerminal();
        style.isTerminal = true;
        session.setStyle(style);
        if (session.run(*line) == PromptSession::Next::Leave)
        {
            break;
        }
        reader->offer(session.correction());
    }
}
