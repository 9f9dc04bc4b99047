// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PromptHistory.cpp - uses POSIX files, since streams cannot create a file that only its owner can read.
#include "tools/calc/prompt/PromptHistory.h"

#include "tools/calc/settings/StateFolder.h"
#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t mostLines = 1000;
constexpr std::size_t mostBytes = std::size_t{1} << 22;  // upper bound on the part of a file that is read

/// Creates the folders of a file: at most three, so that a missing home directory is not created.
void makeFolders(const std::string& file)
{
    std::vector<std::size_t> ends;
    for (std::size_t end = file.rfind('/'); end != std::string::npos && end > 0 && ends.size() < 3;
         end = file.rfind('/', end - 1))
    {
        ends.insert(ends.begin(), end);
    }
    for (const std::size_t end : ends)
    {
        mkdir(file.substr(0, end).c_str(), S_IRWXU);
    }
}

bool writeAll(int descriptor, std::string_view text)
{
    while (!text.empty())
    {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR)
        {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

bool isText(const std::string& line)
{
    const auto isControl = [](char unit) { return static_cast<unsigned char>(unit) < 0x20 || unit == 0x7F; };
    return !line.empty() && toWide(line) && std::ranges::none_of(line, isControl);
}

}

std::string PromptHistory::usualFile()
{
    return stateFile("history");
}

PromptHistory::PromptHistory(std::string givenFile) : file(std::move(givenFile))
{
    if (file.empty())
    {
        trouble = "neither XDG_STATE_HOME nor HOME names a folder";
        return;
    }
    open();
    if (descriptor >= 0)
    {
        read();
    }
    if (!trouble.empty() && descriptor >= 0)
    {
        close(std::exchange(descriptor, -1));
    }
}

PromptHistory::~PromptHistory()
{
    if (descriptor >= 0)
    {
        close(descriptor);
    }
}

void PromptHistory::add(const std::string& line)
{
    if (descriptor < 0 || !isText(line) || (!kept.empty() && kept.back() == line))
    {
        return;
    }
    kept.push_back(line);
    if (!writeAll(descriptor, line + '\n'))
    {
        fail();
        close(std::exchange(descriptor, -1));
    }
}

std::string PromptHistory::takeTrouble()
{
    return std::exchange(trouble, {});
}

void PromptHistory::open()
{
    makeFolders(file);
    // A pipe of that name must not block the prompt.
    constexpr int flags = O_APPEND | O_CLOEXEC | O_NONBLOCK;
    descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
    {
        fail();
        descriptor = ::open(file.c_str(), O_RDONLY | flags);  // existing lines can still be used
    }
    struct stat status = {};
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && !S_ISREG(status.st_mode))
    {
        trouble = trouble.empty() ? file + ": not a regular file" : trouble;
        close(std::exchange(descriptor, -1));
    }
}

void PromptHistory::read()
{
    std::string text;
    char buffer[4096];
    ssize_t size = 0;
    while (text.size() < mostBytes && (size = ::read(descriptor, buffer, sizeof buffer)) > 0)
    {
        text.append(buffer, static_cast<std::size_t>(size));
    }
    if (size < 0)
    {
        fail();
        return;
    }
    const bool endsInLine = text.empty() || text.back() == '\n';
    std::size_t lines = 0;
    for (std::size_t begin = 0; begin < text.size(); ++lines)
    {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line = text.substr(begin, end - begin);
        if (isText(line))
        {
            kept.push_back(std::move(line));
        }
        begin = end + 1;
    }
    const std::size_t surplus = kept.size() - std::min(kept.size(), mostLines);
    kept.erase(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(surplus));
    if (!trouble.empty())
    {
        return;
    }
    if (lines > 2 * mostLines || text.size() >= mostBytes)
    {
        shorten();
    }
    else if (!endsInLine && !writeAll(descriptor, "\n"))
    {
        fail();
    }
}

// Another session that has the file open continues to write to the old one; the lines that it adds are lost.
void PromptHistory::shorten()
{
    std::string text;
    for (const std::string& line : kept)
    {
        text += line + '\n';
    }
    std::string name = file + ".XXXXXX";
    const int shorter = mkstemp(name.data());
    if (shorter < 0 || !writeAll(shorter, text) || rename(name.c_str(), file.c_str()) != 0)
    {
        fail();
        if (shorter >= 0)
        {
            close(shorter);
            unlink(name.c_str());
        }
        return;
    }
    close(std::exchange(descriptor, shorter));
}

void PromptHistory::fail()
{
    trouble = file + ": " + std::generic_category().message(errno);
}
