// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// Finds what a running QuillMossNotch shows, as a screen reader would, and clicks it with a real
// X11 click, as a person would. For ./run, scripts and trying things out.
//
//   NotchClicker --list        every named thing in its windows, one a line
//   NotchClicker --find NAME   waits until NAME is showing, and prints its middle as "X Y"
//   NotchClicker --wait NAME   the same, and until it is enabled (a decision button: armed)
//   NotchClicker --click NAME  the same, and then clicks it
//
// The status is 1 when that did not come about within ten seconds. The program to be read must run
// on the same display and session bus, with QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 unless the desktop
// has its screen reader on.

#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <iostream>
#include <string_view>

namespace notch {
namespace {

int list(const AccessibleProgram& program)
{
    const auto controls = program.controls();
    for (const auto& control : controls)
        std::cout << control.role << " \"" << control.name << "\" at " << control.x << ' '
                  << control.y << (control.isEnabled ? "" : " disabled")
                  << (control.isShowing ? "" : " hidden") << (control.isFocused ? " focused" : "")
                  << '\n';
    return controls.empty() ? 1 : 0;
}

void click(const AccessibleControl& control)
{
    OtherProgram().clickAt(control.x, control.y);
}

int run(std::string_view action, const std::string& name)
{
    const AccessibleProgram program("QuillMossNotch");
    if (action == "--list")
        return list(program);
    const auto control = program.waitFor(
        name, [&](const auto& found) { return found.isEnabled || action == "--find"; });
    if (!control) {
        std::cerr << "Not there: " << name << '\n';
        return 1;
    }
    std::cout << control->x << ' ' << control->y << '\n';
    if (action == "--click")
        click(*control);
    return 0;
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    const std::string_view action = argc > 1 ? argv[1] : "";
    const bool named = action == "--find" || action == "--wait" || action == "--click";
    if (argc != (named ? 3 : 2) || !(named || action == "--list")) {
        std::cerr << "Usage: NotchClicker --list | --find NAME | --wait NAME | --click NAME\n";
        return 2;
    }
    return notch::run(action, named ? argv[2] : "");
}
