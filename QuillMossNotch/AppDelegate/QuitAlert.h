// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppDelegate/QuitStage.h"

namespace notch {

// Puts the question on the screen, in front and with the keyboard. `answered` runs once, later;
// never when the program ends before.
void showQuitAlert(const QuitQuestion& question, std::function<void(QuitStage::Answer)> answered);

} // namespace notch
