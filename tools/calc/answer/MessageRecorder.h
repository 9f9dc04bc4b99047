// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageRecorder.h - takes the place of the message box for as long as it lives, and keeps the messages.
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
