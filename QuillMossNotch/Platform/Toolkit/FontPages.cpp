// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Toolkit/FontPages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <ios>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/mman.h>

namespace notch {
namespace {

// A mapping is a line of proc_pid_maps(5).
bool isOfFont(std::string_view mapping)
{
    constexpr std::array<std::string_view, 4> endings{".ttf", ".ttc", ".otf", ".otc"};
    return std::ranges::any_of(endings, [&](auto ending) { return mapping.ends_with(ending); });
}

// What may have been written is left alone: its bytes would be lost.
void releaseFont(const std::string& mapping)
{
    std::istringstream fields(mapping);
    void* begin{};
    void* end{};
    char dash{};
    std::string permissions;
    fields >> begin >> dash >> end >> permissions;
    if (permissions == "r--p")
        ::madvise(begin,
            static_cast<std::size_t>(static_cast<char*>(end) - static_cast<char*>(begin)),
            MADV_DONTNEED);
}

} // namespace

void releaseFontPages()
{
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);)
        if (isOfFont(line))
            releaseFont(line);
}

} // namespace notch
