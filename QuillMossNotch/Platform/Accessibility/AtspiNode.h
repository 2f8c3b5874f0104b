// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/AXValue.h"
#include "Native/Tree/ScreenRect.h"
#include "Platform/Accessibility/AtspiRole.h"
#include "Platform/Accessibility/Bus.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// How a program's toolkit differs from what AT-SPI 2 says.
struct AtspiToolkit {
    bool isGtk4 = false; // Names widgets by their class, and does not tell what is showing.
    bool isChromium = false; // Its documents are measured in device pixels.
};

// One element as its program describes it, answer by answer, and what the rules make of that.
struct AtspiNode {
    AXElement element;
    AtspiToolkit toolkit;
    bool isTopLevel = false;
    int depth = 0;

    atspi::Role role = atspi::invalidRole;
    atspi::States states;
    std::optional<ScreenRect> frame; // Nothing for an element that has no place.
    std::string name;
    std::optional<std::string> text; // An editable element's.
    AXElements children;
    double scale = 1; // Device pixels in one point, in this element and below it.
    bool failed = false; // It could not be read; nothing else of it counts.

    std::string roleName() const { return atspi::nameOf(role, isTopLevel, !children.empty()); }
    bool isHidden() const;
    AXValue value(std::string_view attribute) const;

    // Each takes one answer; an answer that cannot be read fails the node.
    void takeRole(const bus::Message& reply);
    void takeStates(const bus::Message& reply);
    void takeFrame(const bus::Message& reply, bool hasNone);
    void takeName(const bus::Message& reply);
    void takeText(const bus::Message& reply);
    void takeChildren(const bus::Message& reply);
    // Needs role and frame.
    void rescale(const AtspiNode& parent);
};

} // namespace notch
