// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageRecorder.h - records messages during its lifetime, instead of showing them.
//
// The innermost recorder records; after its destruction, the enclosing one continues. The source of the messages is
// chosen by linking LibraryMessages.cpp (the shared library) or EngineMessages.cpp (the engine alone).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class MessageRecorder
{
public:
    MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    ~MessageRecorder();

    /// The numbers shown since the last call, in order.
    std::vector<std::uint32_t> take()
    {
        texts.clear();
        return std::exchange(ids, {});
    }

    /// Whether every message so far had a text.
    bool allHadText() const { return everyTextPresent; }

    /// Numbers of the messages shown since the last take().
    std::vector<std::uint32_t> ids;
    std::vector<std::wstring> texts;

    struct Source;  // of the messages; sets the recorder's function for showing them

    /// Called when a message is shown; tests use it to act like a user.
    std::function<void()> whileShown;

    void record(std::uint32_t id, const wchar_t* text)
    {
        everyTextPresent = everyTextPresent && text != nullptr && *text != L'\0';
        ids.push_back(id);
        texts.emplace_back(text != nullptr ? text : L"");
        if (whileShown)
        {
            whileShown();
        }
    }

private:
    bool everyTextPresent = true;
    std::unique_ptr<Source> source;
};
