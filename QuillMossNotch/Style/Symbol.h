// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace notch {

// The small pictures beside the texts of the notch and of the settings.
enum class Symbol : std::uint8_t {
    none,
    arrowClockwise,
    arrowUpForward,
    arrowUpForwardCircleFill,
    bellBadge,
    bellBadgeFill,
    checkmark,
    checkmarkCircleFill,
    checkmarkShield,
    checkmarkShieldFill,
    chevronDown,
    chevronLeft,
    chevronRight,
    chevronUp,
    circleDashed,
    clock,
    clockArrowCirclepath,
    cursorarrowMotionlines,
    docOnDoc,
    ellipsisCircle,
    exclamationmarkCircleFill,
    exclamationmarkShield,
    exclamationmarkTriangleFill,
    folder,
    handRaised,
    handTap,
    link,
    linkBadgePlus,
    lock,
    macwindow,
    minusCircleFill,
    power,
    questionmarkBubble,
    questionmarkBubbleFill,
    sliderHorizontal3,
    squareStack,
    xmark,
    xmarkCircleFill,
};

// Every symbol with the name by which designers and documents call it.
inline constexpr std::array<std::pair<Symbol, std::string_view>, 37> symbolNames{{
    {Symbol::arrowClockwise, "arrow.clockwise"},
    {Symbol::arrowUpForward, "arrow.up.forward"},
    {Symbol::arrowUpForwardCircleFill, "arrow.up.forward.circle.fill"},
    {Symbol::bellBadge, "bell.badge"},
    {Symbol::bellBadgeFill, "bell.badge.fill"},
    {Symbol::checkmark, "checkmark"},
    {Symbol::checkmarkCircleFill, "checkmark.circle.fill"},
    {Symbol::checkmarkShield, "checkmark.shield"},
    {Symbol::checkmarkShieldFill, "checkmark.shield.fill"},
    {Symbol::chevronDown, "chevron.down"},
    {Symbol::chevronLeft, "chevron.left"},
    {Symbol::chevronRight, "chevron.right"},
    {Symbol::chevronUp, "chevron.up"},
    {Symbol::circleDashed, "circle.dashed"},
    {Symbol::clock, "clock"},
    {Symbol::clockArrowCirclepath, "clock.arrow.circlepath"},
    {Symbol::cursorarrowMotionlines, "cursorarrow.motionlines"},
    {Symbol::docOnDoc, "doc.on.doc"},
    {Symbol::ellipsisCircle, "ellipsis.circle"},
    {Symbol::exclamationmarkCircleFill, "exclamationmark.circle.fill"},
    {Symbol::exclamationmarkShield, "exclamationmark.shield"},
    {Symbol::exclamationmarkTriangleFill, "exclamationmark.triangle.fill"},
    {Symbol::folder, "folder"},
    {Symbol::handRaised, "hand.raised"},
    {Symbol::handTap, "hand.tap"},
    {Symbol::link, "link"},
    {Symbol::linkBadgePlus, "link.badge.plus"},
    {Symbol::lock, "lock"},
    {Symbol::macwindow, "macwindow"},
    {Symbol::minusCircleFill, "minus.circle.fill"},
    {Symbol::power, "power"},
    {Symbol::questionmarkBubble, "questionmark.bubble"},
    {Symbol::questionmarkBubbleFill, "questionmark.bubble.fill"},
    {Symbol::sliderHorizontal3, "slider.horizontal.3"},
    {Symbol::squareStack, "square.stack"},
    {Symbol::xmark, "xmark"},
    {Symbol::xmarkCircleFill, "xmark.circle.fill"},
}};

// Empty for none.
constexpr std::string_view name(Symbol symbol)
{
    for (const auto& [named, text] : symbolNames) {
        if (named == symbol)
            return text;
    }
    return {};
}

} // namespace notch
