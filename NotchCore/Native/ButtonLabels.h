// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/NativeApprovalNode.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace notch {

// The labels of the buttons of one scan: allowLabel, denyLabel or nothing. A button with texts of
// its own must say the same label with each of them. A button without any shows what all static
// text under it says, joined with blanks. Buttons may stand inside buttons; each element is read
// for its text once all the same, so that asking every button of a tree costs time linear in it.
class ButtonLabels {
public:
    // The button must outlive this object.
    std::optional<std::string_view> of(const NativeApprovalNode& button);

private:
    // Reads for the button and for every textless button inside it.
    void readShownTexts(const NativeApprovalNode& button);

    // By textless button: its static text, reduced to what can matter to a label.
    std::unordered_map<const NativeApprovalNode*, std::string> shownTexts_;
};

} // namespace notch
