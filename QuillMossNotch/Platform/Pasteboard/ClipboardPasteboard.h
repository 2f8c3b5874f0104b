// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Services/Pasteboard.h"

namespace notch {

// The desktop's clipboard; the selection of the middle mouse button is left alone.
class ClipboardPasteboard final : public Pasteboard {
public:
    void setText(const std::string& text) override;
};

} // namespace notch
