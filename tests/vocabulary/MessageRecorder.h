// MessageRecorder.h - stands in for the message box: what the items show, in order.
#pragma once

#include <cstdint>
#include <vector>

/// The numbers of the messages shown since the last call, which it forgets.
std::vector<std::uint32_t> takeShownMessages();
