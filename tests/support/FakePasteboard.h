// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/Pasteboard.h"

namespace notch {

class FakePasteboard final : public Pasteboard {
public:
    void setText(const std::string& given) override { text = given; }

    std::string text;
};

} // namespace notch
