// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/FileSystem.h"
#include "HookConfiguration/QuillMossProfile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Display names of the editions whose settings hold the approval hook of the running executable, in
// the order of the editions. Nothing when the executable's own path is unknown. Reads only.
std::optional<std::vector<std::string>> configuredProfiles();

// One edition's part of it. A file that is missing, unreadable or larger than this system handles
// does not hold the hook.
bool holdsApprovalHook(const FileSystem& files, std::string_view settingsURL,
    std::string_view executableURL, QuillMossProfile profile);

} // namespace notch
