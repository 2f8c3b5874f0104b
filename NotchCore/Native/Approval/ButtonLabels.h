// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Tree/NativeApprovalNode.h"

#include <optional>
#include <string_view>
#include <vector>

namespace notch {

// The labels of the buttons of one scan: allowLabel, denyLabel or nothing. A button with texts of
// its own must say the same label with each of them. A button without any shows what all static
// text under it says, joined with blanks. Buttons may contain buttons; each element is still
// read for its text only once, so that asking every button of a tree costs time linear in it.
class ButtonLabels {
public:
    // Buttons must be asked for in pre-order; some may be left out.
    std::optional<std::string_view> of(const NativeApprovalNode& button);

private:
    struct Labelled {
        const NativeApprovalNode* button = nullptr;
        std::optional<std::string_view> label;
    };

    // Reads for the button and for every textless button inside it.
    void readShownTexts(const NativeApprovalNode& button);

    // The textless buttons already read that may still be asked for, the next one last.
    std::vector<Labelled> ahead_;
};

} // namespace notch
