// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/AtspiNode.h"

#include "Native/Scan/ScanLimits.h"

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace notch {
namespace {

// More than any rule takes: what a hostile program says beyond is not even kept.
constexpr std::size_t maxChildren = scan::nodeLimit;
constexpr std::size_t maxText = scan::maxTextBytes + 1;

AXValue orNull(const std::optional<std::string>& text)
{
    return text ? AXValue(*text) : AXNull{};
}

} // namespace

bool AtspiNode::isHidden() const
{
    if (toolkit.isGtk4)
        return !states.isVisible() || (frame && frame->width == 0 && frame->height == 0);
    return !states.isVisible() || !states.isShowing();
}

AXValue AtspiNode::value(std::string_view attribute) const
{
    if (attribute == ax::role)
        return roleName();
    if (attribute == ax::title)
        return atspi::isTextOrGroup(role) && !children.empty() ? AXValue(AXNull{}) : AXValue(name);
    if (attribute == ax::value)
        return orNull(text);
    if (attribute == ax::enabled)
        return states.isSensitive();
    if (attribute == ax::hidden)
        return isHidden();
    if (attribute == ax::children)
        return children;
    if (attribute == ax::position)
        return frame ? AXValue(AXPoint{frame->x, frame->y}) : AXError{AXError::noValue};
    if (attribute == ax::size)
        return frame ? AXValue(AXSize{frame->width, frame->height}) : AXError{AXError::noValue};
    // The description here is the tool tip; as a text it would keep a button with one from being
    // recognised.
    return AXNull{};
}

void AtspiNode::takeRole(const bus::Message& reply)
{
    failed = failed || !reply || sd_bus_message_read(reply.get(), "u", &role) <= 0
          || role == atspi::invalidRole;
}

void AtspiNode::takeStates(const bus::Message& reply)
{
    const void* words = nullptr;
    std::size_t size = 0;
    if (!reply || sd_bus_message_read_array(reply.get(), 'u', &words, &size) < 0
        || size != 2 * sizeof(std::uint32_t)) {
        failed = true;
        return;
    }
    const auto* bits = static_cast<const std::uint32_t*>(words);
    states.bits = bits[0] | std::uint64_t{bits[1]} << 32U;
    failed = failed || states.isDefunct();
}

void AtspiNode::takeFrame(const bus::Message& reply, bool hasNone)
{
    if (hasNone)
        return;
    std::array<int, 4> read{};
    if (!reply
        || sd_bus_message_read(reply.get(), "(iiii)", &read[0], &read[1], &read[2], &read[3]) <= 0)
        failed = true;
    else
        frame = ScreenRect{double(read[0]), double(read[1]), double(read[2]), double(read[3])};
}

void AtspiNode::takeName(const bus::Message& reply)
{
    auto read = bus::propertyText(reply);
    failed = failed || !read;
    if (read && !(toolkit.isGtk4 && read->starts_with("Gtk")))
        name = read->substr(0, maxText);
}

void AtspiNode::takeText(const bus::Message& reply)
{
    auto read = bus::text(reply);
    failed = failed || !read;
    if (read)
        text = read->substr(0, maxText);
}

void AtspiNode::takeChildren(const bus::Message& reply)
{
    if (!reply || sd_bus_message_enter_container(reply.get(), 'a', "(so)") < 0) {
        failed = true;
        return;
    }
    const char* owner = nullptr;
    const char* path = nullptr;
    while (children.size() < maxChildren
           && sd_bus_message_read(reply.get(), "(so)", &owner, &path) > 0)
        children.push_back({owner, path});
}

// In Chromium everything from the outermost document down is in device pixels, the rest in points:
// the document is as wide as what it lies in.
void AtspiNode::rescale(const AtspiNode& parent)
{
    scale = parent.scale;
    const bool begins = toolkit.isChromium && role == atspi::documentWeb && scale == 1;
    if (begins && frame && parent.frame && frame->width > 0 && parent.frame->width > 0)
        scale = frame->width / parent.frame->width;
    if (frame && scale != 1)
        frame = ScreenRect{
            frame->x / scale, frame->y / scale, frame->width / scale, frame->height / scale};
}

} // namespace notch
