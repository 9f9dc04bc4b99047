// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// StateFolder.cpp - see StateFolder.h.
#include "tools/calc/settings/StateFolder.h"

#include <cstdlib>
#include <filesystem>

#if defined(_WIN32)
#include "tools/calc/text/Utf8.h"
#endif

namespace {

#if defined(_WIN32)

std::string stateFolder()
{
    const wchar_t* const folder = _wgetenv(L"LOCALAPPDATA");
    return folder != nullptr && std::filesystem::path(folder).is_absolute() ? toUtf8(folder) : "";
}

#else

/// The folder in an environment variable; empty unless it is an absolute path.
std::string folderIn(const char* variable)
{
    const char* const value = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe): nothing changes it
    return value != nullptr && std::filesystem::path(value).is_absolute() ? value : "";
}

std::string stateFolder()
{
    const std::string folder = folderIn("XDG_STATE_HOME");
    const std::string home = folder.empty() ? folderIn("HOME") : "";
    return home.empty() ? folder : home + "/.local/state";
}

#endif

}

std::string stateFile(std::string_view name)
{
    const std::string folder = stateFolder();
    return folder.empty() ? "" : folder + "/mathexpr/" + std::string(name);
}
