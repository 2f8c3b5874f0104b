// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// NotchClicker --wait NAME|--click NAME
//
// Waits until a running QuillMossNotch shows something of that name that is enabled (a decision
// button: armed), as a screen reader would find it, and then clicks it with a real X11 click, as a
// person would. For ./run, scripts and trying things out.
//
// The status is 1 when that did not come about within ten seconds. The program to be read must run
// on the same display and session bus, with QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 unless the desktop
// has its screen reader on.

#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <iostream>
#include <string_view>

int main(int argc, char** argv)
{
    const std::string_view action = argc == 3 ? argv[1] : "";
    if (action != "--wait" && action != "--click") {
        std::cerr << "Usage: NotchClicker --wait NAME | --click NAME\n";
        return 2;
    }
    const auto control =
        notch::AccessibleProgram("QuillMossNotch").waitFor(argv[2], [](const auto& found) {
            return found.isEnabled;
        });
    if (!control) {
        std::cerr << "Not there: " << argv[2] << '\n';
        return 1;
    }
    if (action == "--click")
        notch::OtherProgram().clickAt(control->x, control->y);
    return 0;
}
