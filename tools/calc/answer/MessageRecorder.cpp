// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageRecorder.cpp - a message display that records.

#include "tools/calc/answer/MessageRecorder.h"

#include "tools/calc/text/Utf8.h"

#include <utility>

MessageRecorder::MessageRecorder()
    : previous(mathexpr::setMessageDisplay(
          {[](void* context, std::uint32_t id, const wchar_t* text) {
               static_cast<MessageRecorder*>(context)->messages.push_back({id, toUtf8(text)});
           },
           this}))
{}

MessageRecorder::~MessageRecorder()
{
    mathexpr::setMessageDisplay(previous);
}

std::vector<ShownMessage> MessageRecorder::takeMessages()
{
    return std::exchange(messages, {});
}
