// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Any bytes at all: no crash, and what is read survives being written and read again.

#include "Foundation/Json.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using notch::Json;
    const auto document = Json::parse({reinterpret_cast<const char*>(bytes), size});
    if (!document)
        return 0;
    const auto compact = document->compact();
    const auto again = Json::parse(compact);
    require(again == document && again->compact() == compact);
    constexpr std::size_t enough = 1 << 20; // Blanks make a deep value's text long.
    if (const auto pretty = document->pretty(enough))
        require(Json::parse(*pretty) == document);
    return 0;
}
