// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Any command line at all: what counts as this system's own is exactly what this system writes; and
// any path that it accepts is found again in the command line made for it. Settings are UTF-8, so
// that no command line in them is anything else.

#include "Foundation/Utf8.h"
#include "HookConfiguration/HookInstaller.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

using notch::HookInstaller;

std::optional<HookInstaller::CommandArguments> ownedArguments(std::string_view command)
{
    return HookInstaller::ownedArguments(
        command, HookInstaller::hookFlag, HookInstaller::ownerMarker);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const bool isUtf8 = notch::isUtf8(text);
    if (const auto arguments = ownedArguments(text); arguments && isUtf8)
        require(HookInstaller::approvalCommand((*arguments)[0], (*arguments)[3]) == text);
    try {
        const auto arguments = ownedArguments(HookInstaller::approvalCommand(text, "quillmossAI"));
        require(arguments && arguments->front() == text);
    } catch (const HookInstaller::Failure&) {
        require(!isUtf8 || !text.starts_with('/') || text.find('\0') != text.npos
                || text.find('\n') != text.npos);
    }
    return 0;
}
