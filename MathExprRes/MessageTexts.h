// MessageTexts.h - the texts of the messages, 1 to 19, in the user's language.
#pragma once

#include <cstdint>

/// The text of a message, zero-terminated and valid for the life of the process; null when there is none of that number.
const wchar_t* messageText(std::uint32_t id);
