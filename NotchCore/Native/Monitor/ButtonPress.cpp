// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/ButtonPress.h"

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Tree/Role.h"

#include <algorithm>
#include <array>

namespace notch {
namespace {

constexpr std::array lastLook{
    ax::role, ax::enabled, ax::hidden, ax::title, ax::value, ax::description};

// An attribute without a text is no objection; any text that it has must be the label.
bool showsNothingElse(const AXValue& value, std::string_view label)
{
    const auto* text = std::get_if<std::string>(&value);
    return !text || text->empty()
        || NativeApprovalClassifier::normalizedButtonLabel(*text) == label;
}

} // namespace

bool pressable(Accessibility& accessibility, const AXElement& button, std::string_view label)
{
    const auto values = accessibility.attributes(button, lastLook);
    if (!values || values->size() != lastLook.size())
        return false;
    const auto& read = *values;
    if (read[0] != AXValue(std::string(role::button)) || read[1] != AXValue(true)
        || read[2] == AXValue(true))
        return false;
    for (const auto& text : {read[3], read[4], read[5]})
        if (!showsNothingElse(text, label))
            return false;
    const auto actions = accessibility.actionNames(button);
    return actions && std::ranges::find(*actions, ax::press) != actions->end();
}

} // namespace notch
