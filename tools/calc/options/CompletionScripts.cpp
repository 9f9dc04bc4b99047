// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletionScripts.cpp - see CompletionScripts.h. The name of an option's value determines its completion: FILE is
// completed with file names, SHELL with the shells, others not at all.

#include "tools/calc/options/CompletionScripts.h"

#include <string_view>

namespace {

/// Puts a backslash before each escaped character, and the result in single quotes, as a word of a shell.
std::string shellWord(std::string_view text, std::string_view escaped = {})
{
    std::string word = "'";
    for (const char character : text)
    {
        if (character == '\'')
        {
            word += "'\\''";
            continue;
        }
        if (escaped.find(character) != std::string_view::npos)
        {
            word += '\\';
        }
        word += character;
    }
    return word + "'";
}

std::string shellNames()
{
    std::string names;
    for (const char* shell : completionShells)
    {
        names += names.empty() ? shell : std::string(" ") + shell;
    }
    return names;
}

std::string bashScript(const std::vector<CompletedOption>& options)
{
    std::string all;
    std::string values;
    for (const CompletedOption& option : options)
    {
        all += (all.empty() ? "--" : " --") + option.name;
        if (option.valueName.empty())
        {
            continue;
        }
        values += "    --" + option.name + ")";
        if (option.valueName == "FILE")
        {
            values += " compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$word\");";
        }
        else if (option.valueName == "SHELL")
        {
            values += " mapfile -t COMPREPLY < <(compgen -W '" + shellNames() + "' -- \"$word\");";
        }
        values += " return ;;\n";
    }
    return "# Completes the options of mathexpr in bash.\n"
           "_mathexpr()\n"
           "{\n"
           "    local word=${COMP_WORDS[COMP_CWORD]}\n"
           "    COMPREPLY=()\n"
           "    case ${COMP_WORDS[COMP_CWORD - 1]} in\n" +
           values +
           "    esac\n"
           "    [[ $word == -* ]] || return\n"
           "    mapfile -t COMPREPLY < <(compgen -W '" +
           all +
           "' -- \"$word\")\n"
           "}\n"
           "complete -F _mathexpr mathexpr\n";
}

std::string zshScript(const std::vector<CompletedOption>& options)
{
    std::string script = "#compdef mathexpr\n"
                         "# Completes the options of mathexpr in zsh.\n"
                         "_arguments \\\n";
    for (const CompletedOption& option : options)
    {
        constexpr std::string_view special = "[]:\\";
        std::string specification = option.repeatable ? "*--" : "--";
        specification += option.name + (option.valueName.empty() ? "[" : "=[");
        std::string word = "  '" + specification;
        word += shellWord(option.description, special).substr(1);
        word.pop_back();
        word += ']';
        if (!option.valueName.empty())
        {
            word += ":" + option.valueName + ":";
            word += option.valueName == "FILE" ? "_files" : option.valueName == "SHELL" ? "(" + shellNames() + ")" : "";
        }
        script += word + "' \\\n";
    }
    return script + "  '*:EXPRESSION:'\n";
}

std::string fishScript(const std::vector<CompletedOption>& options)
{
    std::string script = "# Completes the options of mathexpr in fish.\n"
                         "complete -c mathexpr -f\n";
    for (const CompletedOption& option : options)
    {
        script += "complete -c mathexpr -l " + option.name;
        if (option.valueName == "FILE")
        {
            script += " -r -F";
        }
        else if (option.valueName == "SHELL")
        {
            script += " -x -a '" + shellNames() + "'";
        }
        else if (!option.valueName.empty())
        {
            script += " -x";
        }
        script += " -d " + shellWord(option.description) + "\n";
    }
    return script;
}

}

std::string completionScript(const std::vector<CompletedOption>& options, const std::string& shell)
{
    return shell == "bash"   ? bashScript(options)
           : shell == "zsh"  ? zshScript(options)
           : shell == "fish" ? fishScript(options)
                             : std::string();
}
