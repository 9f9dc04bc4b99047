// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LibraryMessages.cpp - records what the shared library shows, by replacing the process's message display.
#include "mathexpr/MessageDisplay.h"
#include "tests/support/MessageRecorder.h"

struct MessageRecorder::Source
{
    explicit Source(MessageRecorder* recorder) : before(mathexpr::setMessageDisplay({&show, recorder})) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() { mathexpr::setMessageDisplay(before); }

    static void show(void* recorder, std::uint32_t id, const wchar_t* text)
    {
        static_cast<MessageRecorder*>(recorder)->record(id, text);
    }

    mathexpr::ProcessMessageDisplay before;
};

MessageRecorder::MessageRecorder() : source(std::make_unique<Source>(this)) {}

MessageRecorder::~MessageRecorder() = default;
