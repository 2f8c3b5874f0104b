// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace notch {

// The desktop's general clipboard. Main thread.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    // Replaces what is there by this plain text.
    virtual void setText(const std::string& text) = 0;
};

} // namespace notch
