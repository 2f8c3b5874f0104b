// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Any line on the turn-end socket: no crash, and a valid event is read back as it was.

#include "TurnEnd/CompletionEvent.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using notch::CompletionEvent;
    const auto event = CompletionEvent::parse({reinterpret_cast<const char*>(bytes), size});
    if (event && event->isValid() && CompletionEvent::parse(event->serialize()) != event)
        std::abort();
    return 0;
}
