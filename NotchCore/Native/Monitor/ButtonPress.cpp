// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/ButtonPress.h"

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Tree/Role.h"

#include <algorithm>

namespace notch {
namespace {

// An attribute without a text is no objection; any text that it has must be the label.
bool showsNothingElse(const std::optional<AXValue>& value, std::string_view label)
{
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return !text || text->empty()
        || NativeApprovalClassifier::normalizedButtonLabel(*text) == label;
}

} // namespace

bool pressable(Accessibility& accessibility, const AXElement& button, std::string_view label)
{
    if (accessibility.attribute(button, ax::role) != AXValue(std::string(role::button)))
        return false;
    if (accessibility.attribute(button, ax::enabled) != AXValue(true))
        return false;
    if (accessibility.attribute(button, ax::hidden) == AXValue(true))
        return false;
    for (const auto name : {ax::title, ax::value, ax::description})
        if (!showsNothingElse(accessibility.attribute(button, name), label))
            return false;
    const auto actions = accessibility.actionNames(button);
    return actions && std::ranges::find(*actions, ax::press) != actions->end();
}

} // namespace notch
