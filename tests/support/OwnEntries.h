// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Json.h"
#include "HookConfiguration/HookInstaller.h"

#include <string>
#include <string_view>
#include <utility>

namespace notch {

inline constexpr const char* ownExecutable = "/a/QuillMossNotch";

// The text with these words replaced: OWN stands for the own approval hook of the first edition,
// OWN_AI for that of the second, OWN_MOVED for that of a copy at another path, and BARE for the
// members of OWN, to which a row adds its own.
inline std::string withOwnEntries(std::string text)
{
    const auto hook = [](const char* path, const char* source) {
        return R"({"type":"command","timeout":60,"command":)"
             + Json(HookInstaller::approvalCommand(path, source)).compact() + "}";
    };
    const auto own = hook(ownExecutable, "quillmoss");
    for (const auto& [word, replacement] : {
             std::pair{"OWN_AI", hook(ownExecutable, "quillmossAI")},
             std::pair{"OWN_MOVED", hook("/b/N", "quillmoss")},
             std::pair{"OWN", own},
             std::pair{"BARE", own.substr(1, own.size() - 2)},
         })
        for (auto at = text.find(word); at != text.npos; at = text.find(word))
            text.replace(at, std::string_view(word).size(), replacement);
    return text;
}

} // namespace notch
