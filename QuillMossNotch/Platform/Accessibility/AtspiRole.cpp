// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/AtspiRole.h"

#include "Native/Tree/Role.h"

#include <algorithm>
#include <array>

namespace notch::atspi {
namespace {

constexpr Role icon = 26, image = 27, pushButton = 43;
// alert, dialog, filler, nested frame, internal frame, panel, status bar, paragraph, caption,
// section, form, grouping, notification, block quote, article, landmark, log
constexpr std::array<Role, 17> groups{
    2, 16, 20, 23, 28, 39, 54, 73, 81, 85, 87, 99, 101, 105, 109, 110, 111};

} // namespace

bool isWindow(Role role)
{
    return role == frame || role == window || role == dialog || role == alert;
}

bool isTextOrGroup(Role role)
{
    return role == staticText || role == label;
}

std::string nameOf(Role role, bool isTopLevel, bool hasChildren)
{
    if (isTopLevel && isWindow(role))
        return std::string(role::window);
    if (role == pushButton)
        return std::string(role::button);
    if (role == icon || role == image)
        return std::string(role::image);
    if (isTextOrGroup(role))
        return std::string(hasChildren ? role::group : role::staticText);
    if (std::ranges::find(groups, role) != groups.end())
        return std::string(role::group);
    return "AX" + std::to_string(role);
}

} // namespace notch::atspi
