// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageRecorder.h - keeps the messages that are shown while it lives, instead of showing them.
//
// The innermost recorder records; at its end the one before it goes on. Where messages come from is chosen by linking
// LibraryMessages.cpp (the shared library's display) or EngineMessages.cpp (the engine without the library around it).
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

    /// What was shown since the last take().
    std::vector<std::uint32_t> ids;
    std::vector<std::wstring> texts;

    struct Source;  // of the messages; takes the recorder's place in what shows them

    /// Called when a message is shown, as a user would act at a message box.
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
