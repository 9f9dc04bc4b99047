// Refusal.h - the two ways in which an item turns its arguments down.
#pragma once

#include "MTParserLib/MTMessage.h"

#include <cstdint>

/// Tells the user why, if the item may, and answers false: what evaluate returns for arguments that do not fit.
bool refuse(Message::Id reason, bool showMessages);

/// Raises the parsing exception of a function that needs a number and is given a point.
/// @param line  the source line of the function's class, by which a reader of the exception tells which one it was
[[noreturn]] void refusePoint(std::uint32_t line);

/// Why the last item refused on this thread, also where it could not tell the user; asked once, and then 0.
Message::Id takeRefusal() noexcept;
