// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Replay.cpp - runs a fuzzer's target on files, without a fuzzer: on all files in the given directories.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** directories)
{
    std::size_t nbFiles = 0;
    for (int i = 1; i < count; ++i)
    {
        for (const auto& entry : std::filesystem::directory_iterator(directories[i]))
        {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            std::fprintf(stderr, "%s\n", entry.path().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++nbFiles;
        }
    }
    std::printf("%zu files\n", nbFiles);
    return nbFiles == 0 ? 1 : 0;
}
