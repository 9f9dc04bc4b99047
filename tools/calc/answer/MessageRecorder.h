// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageRecorder.h - replaces the message box during its lifetime, and records the messages.
#pragma once

#include "mathexpr/MessageDisplay.h"
#include "tools/calc/answer/Answer.h"

#include <vector>

class MessageRecorder
{
public:
    MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    ~MessageRecorder();

    /// The messages shown since the last call, in order.
    std::vector<ShownMessage> takeMessages();

private:
    mathexpr::ProcessMessageDisplay previous;
    std::vector<ShownMessage> messages;
};
