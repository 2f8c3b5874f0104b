// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Any line on the turn-end socket: no crash, and a valid event is read back as it was.

#include "Require.h"
#include "TurnEnd/CompletionEvent.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const auto event = notch::CompletionEvent::parse({reinterpret_cast<const char*>(bytes), size});
    if (event && event->isValid())
        require(notch::CompletionEvent::parse(event->serialize()) == event);
    return 0;
}
