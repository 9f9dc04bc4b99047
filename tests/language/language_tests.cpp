// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// language_tests.cpp - every data file is a test, which runs each row through every path.
#include "tests/language/Runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

std::vector<std::filesystem::path> dataFiles()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(LANGUAGE_DATA_DIR))
    {
        if (entry.path().extension() == ".txt")
        {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string testName(const testing::TestParamInfo<std::filesystem::path>& info)
{
    std::string name = info.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class Language : public testing::TestWithParam<std::filesystem::path>
{};

TEST_P(Language, RowsHoldOnEveryPath)
{
    const std::string file = GetParam().string();
    const DataFile data = readDataFile(GetParam());
    for (const RowError& error : data.errors)
    {
        ADD_FAILURE_AT(file.c_str(), error.line) << error.what;
    }
    EXPECT_FALSE(data.rows.empty());
    for (const Row& row : data.rows)
    {
        const RowReport report = runRow(row);
        for (const std::string& failure : report.failures)
        {
            ADD_FAILURE_AT(file.c_str(), row.line) << row.source << '\n' << failure;
        }
        if (report.nbPaths == 0)
        {
            ADD_FAILURE_AT(file.c_str(), row.line) << row.source << "\nno path has a meaning for this row";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Data, Language, testing::ValuesIn(dataFiles()), testName);

}
