// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EditorTexts.cpp - see EditorTexts.h.
#include "tests/editor/EditorTexts.h"

#include "tests/support/Compiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

EditorHost::EditorHost(Bindings bindings) : known(std::move(bindings))
{
    for (const auto& [name, value] : known)
    {
        names.push_back(name);
    }
}

bool EditorHost::lookupValue(const wchar_t* name, VALTYPE& value) const
{
    ++lookupCount;
    const auto found = known.find(name);
    if (found != known.end() && found->second)
    {
        value = *found->second;
    }
    return found != known.end();
}

const wchar_t* EditorHost::getName(std::uint32_t index) const
{
    return index < names.size() ? names[index].c_str() : nullptr;
}

EditedExpression::EditedExpression(Bindings bindings) : host(std::move(bindings)), expression(true, &host)
{
    mathexpr::setNameSource(expression, &host);
}

bool EditedExpression::compiles(const std::wstring& text)
{
    return ::compiles(expression, text);
}

const std::vector<TypedText>& languageTexts()
{
    static const std::vector<TypedText> texts = [] {
        std::vector<TypedText> read;
        for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_DATA_DIR))
        {
            for (const Row& row : readDataFile(entry.path()).rows)
            {
                for (const Step& step : row.steps)
                {
                    if (step.kind == Step::Kind::Expression)
                    {
                        read.push_back({step.text, row.host, row.source});
                    }
                }
            }
        }
        return read;
    }();
    return texts;
}

void forEachBeginning(const std::function<void(const TypedText&)>& work)
{
    for (const TypedText& whole : languageTexts())
    {
        const std::size_t stride = std::max<std::size_t>(1, whole.text.size() / 100);
        for (std::size_t length = 0; length < whole.text.size(); length += stride)
        {
            work({whole.text.substr(0, length), whole.host, whole.where});
        }
        work(whole);
    }
}

std::vector<std::wstring> goldenTexts()
{
    std::vector<std::wstring> texts;
    std::ifstream file(std::string(PROGRAMS_DIRECTORY) + "/programs.txt");
    for (std::string line; std::getline(file, line);)
    {
        if (!line.empty() && line.front() != ' ' && line.front() != '#')
        {
            texts.emplace_back(line.begin(), line.end());
        }
    }
    return texts;
}

std::wstring withoutBlanks(const std::wstring& text)
{
    std::wstring stripped = text;
    stripped.erase(std::remove(stripped.begin(), stripped.end(), L' '), stripped.end());
    return stripped;
}
