// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptSession.h - runs the lines of the prompt, typed or loaded: expressions and commands.
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

/// Values, lists and help go to standard output, errors to standard error.
class PromptSession
{
public:
    enum class Next
    {
        GoOn,
        Leave,
    };

    /// The arguments must outlive the session.
    PromptSession(const Options& options, Calculator& calculator);

    /// Sets how failures are shown.
    void setStyle(const TerminalStyle& newStyle);

    /// Sets the file in which settings are saved.
    void keepSettingsIn(const std::string& file);

    /// The correction of the last line, if it failed and has an unambiguous one; otherwise empty.
    const std::string& correction() const { return corrected; }

    /// Runs a line in UTF-8. Its value becomes the variable "ans".
    Next run(std::string_view line);

    /// All names that have a value.
    std::vector<NamedValue> names() const;

private:
    /// @param origin  location of the line, for error messages; empty for a typed line
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
    std::vector<std::string> computed;  // lines that yielded a value
    std::size_t loading = 0;            // nesting depth of files that are being loaded
};
