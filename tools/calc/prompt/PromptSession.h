// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSession.h - what the lines of the prompt do, wherever they come from: expressions, and the prompt's commands.
#pragma once

#include "tools/calc/Calculator.h"
#include "tools/calc/answer/NamedValue.h"
#include "tools/calc/options/Options.h"
#include "tools/calc/settings/Settings.h"
#include "tools/calc/terminal/TerminalStyle.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Values, lists and help go to standard output, what went wrong to standard error.
class PromptSession
{
public:
    enum class Next
    {
        GoOn,
        Leave,
    };

    /// Borrows what it is given.
    PromptSession(const Options& options, Calculator& calculator);

    /// How failures are shown from now on.
    void setStyle(const TerminalStyle& newStyle);

    /// Where settings are remembered from now on.
    void keepSettingsIn(const std::string& file);

    /// The last line, corrected, where it failed and a correction is plain; empty else.
    const std::string& correction() const { return corrected; }

    /// Runs one line, UTF-8. A value becomes the variable "ans".
    Next run(std::string_view line);

    /// What has a value now.
    std::vector<NamedValue> names() const;

private:
    /// @param origin  where the line stands, for complaints; empty for a line that was typed
    Next run(std::string_view line, const std::string& origin);

    void compute(std::string_view expression, const std::string& origin);
    void help(const std::string& name) const;
    void find(const std::string& words, const std::string& origin) const;
    void listNames() const;
    void list(const std::string& family, const std::string& origin) const;
    Next load(const std::string& file, const std::string& origin);
    void save(const std::string& file, const std::string& origin) const;
    void set(const std::string& argument, const std::string& origin);
    void setDigits(const std::string& digits, const std::string& origin);
    void complain(const std::string& origin, const std::string& what) const;

    const Options& options;
    Calculator& calculator;
    TerminalStyle style;
    Settings settings;
    std::string settingsFile;
    std::string corrected;
    std::vector<std::string> computed;  // the lines that had a value
    std::size_t loading = 0;            // files that are being loaded, one from within the other
};
