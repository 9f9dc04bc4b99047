// ShownMessages.h - where the engine's messages go in a test program without the shared library.
#pragma once

#include <cstdint>
#include <vector>

/// The numbers shown since the last call, in order.
std::vector<std::uint32_t> takeShownMessages();
