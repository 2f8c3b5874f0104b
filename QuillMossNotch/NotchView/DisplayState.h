// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <cstdint>

namespace notch {

// The switches that change what the notch says.
struct ShownFeatures {
    bool nativeEnabled = false;
    bool questionsEnabled = true;
    bool completionsEnabled = false;

    explicit ShownFeatures(const Preferences& preferences);
    ShownFeatures() = default;

    bool operator==(const ShownFeatures&) const = default;
};

// Which content the open notch shows.
enum class DisplayState : std::uint8_t { idle, receipt, approval, question, completion };

// The first that holds, top to bottom: a receipt, a request, a question, a turn's end.
DisplayState displayState(const AppModelState& state, const ShownFeatures& features);

} // namespace notch
