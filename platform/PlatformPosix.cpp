// PlatformPosix.cpp - Platform.h for Linux and other POSIX systems.

#include "platform/Platform.h"

#include <cerrno>
#include <string>

#include <unistd.h>

namespace {

/// The UTF-8 form of a text of code points; what is no code point becomes U+FFFD.
std::string toUtf8(std::wstring_view text)
{
    static_assert(sizeof(wchar_t) == 4, "wide text is UTF-32 here");
    const auto continuation = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    std::string bytes;
    for (const wchar_t c : text)
    {
        auto point = static_cast<char32_t>(c);
        if (point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF))
        {
            point = 0xFFFD;
        }
        if (point < 0x80)
        {
            bytes += static_cast<char>(point);
        }
        else if (point < 0x800)
        {
            bytes += static_cast<char>(0xC0 | (point >> 6));
            bytes += continuation(point);
        }
        else if (point < 0x10000)
        {
            bytes += static_cast<char>(0xE0 | (point >> 12));
            bytes += continuation(point >> 6);
            bytes += continuation(point);
        }
        else
        {
            bytes += static_cast<char>(0xF0 | (point >> 18));
            bytes += continuation(point >> 12);
            bytes += continuation(point >> 6);
            bytes += continuation(point);
        }
    }
    return bytes;
}

// The descriptors are used directly: the host may have put its streams into any state, such as the wide one.

void writeToStandardError(std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
        if (written > 0)
        {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        else if (errno != EINTR)
        {
            return;
        }
    }
}

void waitForEnter()
{
    char c = '\0';
    ssize_t count = 0;
    do
    {
        count = read(STDIN_FILENO, &c, 1);
    } while ((count == 1 && c != '\n') || (count < 0 && errno == EINTR));
}

}

bool platform::isSameName(std::wstring_view left, std::wstring_view right) noexcept
{
    return left == right;
}

void platform::showMessageBox(const wchar_t* text)
{
    const bool userIsPresent = isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1;
    writeToStandardError(toUtf8(text) + (userIsPresent ? " [Enter]" : "\n"));
    if (userIsPresent)
    {
        waitForEnter();
    }
}
