// MessageRecorder.h - keeps the messages that the library shows, instead of showing them.
//
// While one lives, it stands in for the process's message display; the display before it is put back at the end.
#pragma once

#include "mathexpr/MessageDisplay.h"

#include <string>
#include <utility>
#include <vector>

class MessageRecorder
{
public:
    MessageRecorder() : previous(setMessageDisplay({&record, this})) {}
    ~MessageRecorder() { setMessageDisplay(previous); }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    /// The numbers shown since the last call, in order.
    std::vector<std::uint32_t> take() { return std::exchange(ids, {}); }

    /// Whether every message so far had a text.
    bool allHadText() const { return everyTextPresent; }

private:
    static void record(void* context, std::uint32_t id, const wchar_t* text)
    {
        auto& recorder = *static_cast<MessageRecorder*>(context);
        recorder.ids.push_back(id);
        recorder.everyTextPresent = recorder.everyTextPresent && text != nullptr && *text != L'\0';
    }

    MessageDisplay previous;
    std::vector<std::uint32_t> ids;
    bool everyTextPresent = true;
};
