// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Interaction/NotchInteraction.h"
#include "Style/Symbol.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace notch {

// What became of the last request.
struct ReceiptContent {
    enum class Tint : std::uint8_t { muted, accent, warning };

    std::string_view title;
    Symbol symbol = Symbol::none;
    Tint tint = Tint::muted;
    std::string_view note;
    std::optional<std::string> next; // The button to what still waits.

    ReceiptContent(const NotchInteraction::Feedback& feedback, std::size_t pending);
};

} // namespace notch
