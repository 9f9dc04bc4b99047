// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// EngineMessages.cpp - implements showMessage for programs without the shared library: records the message.
#include "MTParserLib/MTMessage.h"
#include "tests/support/MessageRecorder.h"

struct MessageRecorder::Source
{
    explicit Source(MessageRecorder* recorder) : before(std::exchange(innermost, recorder)) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() { innermost = before; }

    static void show(Message::Id id)
    {
        if (innermost != nullptr)
        {
            innermost->record(id, nullptr);
        }
    }

    static inline MessageRecorder* innermost = nullptr;
    MessageRecorder* before;
};

MessageRecorder::MessageRecorder() : source(std::make_unique<Source>(this)) {}

MessageRecorder::~MessageRecorder() = default;

void showMessage(Message::Id id)
{
    MessageRecorder::Source::show(id);
}
