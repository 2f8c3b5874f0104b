// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

// What AT-SPI 2 says of an element in numbers (atspi-constants.h).
namespace notch::atspi {

using Role = std::uint32_t;
inline constexpr Role invalidRole = 0;
inline constexpr Role alert = 2;
inline constexpr Role dialog = 16;
inline constexpr Role frame = 23;
inline constexpr Role label = 29;
inline constexpr Role window = 69;
inline constexpr Role documentWeb = 95;
inline constexpr Role staticText = 116;

// The states of an element, one bit each.
struct States {
    std::uint64_t bits = 0;

    bool isDefunct() const { return has(6); }
    bool isEditable() const { return has(7); }
    bool isIconified() const { return has(15); }
    bool isSensitive() const { return has(24); }
    bool isShowing() const { return has(25); }
    bool isVisible() const { return has(30); }

private:
    bool has(int bit) const { return (bits >> bit & 1U) != 0; }
};

// One of the roles that make an element below the application a window.
bool isWindow(Role role);
// The role is that of a text only where the element has no children; else it is a group whose name
// says nothing.
bool isTextOrGroup(Role role);
// The role's name for the rules; `hasChildren` counts for isTextOrGroup() alone. A role that no
// rule knows keeps its number.
std::string nameOf(Role role, bool isTopLevel, bool hasChildren);

} // namespace notch::atspi
