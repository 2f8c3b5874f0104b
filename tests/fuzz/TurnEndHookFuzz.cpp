// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Any bytes on a turn-end hook's stdin: nothing, or an event that every receiver accepts.

#include "Require.h"
#include "TurnEnd/CompletionEvent.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using notch::CompletionEvent;
    constexpr notch::Date now{785523422.75};
    const auto event =
        CompletionEvent::decodeHook({reinterpret_cast<const char*>(bytes), size}, now);
    if (!event)
        return 0;
    const auto line = event->serialize();
    require(event->isValid() && event->isFresh(now));
    require(line.size() <= CompletionEvent::maximumPayload);
    require(line.find('\n') == std::string::npos);
    require(CompletionEvent::parse(line) == event);
    return 0;
}
