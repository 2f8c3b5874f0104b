// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "HookConfiguration/QuillMossProfile.h"
#include "SettingsView/ConfirmDialog.h"

#include <cstdint>
#include <string>

namespace notch {

// The two directions of a change of the turn-end hooks.
enum class TurnEndChange : std::uint8_t { install, removal };

// What is asked before each change of the host's file.
ConfirmQuestion installQuestion(QuillMossProfile profile, std::string preview);
ConfirmQuestion removeQuestion(QuillMossProfile profile);
ConfirmQuestion turnEndQuestion(TurnEndChange change);

} // namespace notch
