// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct sd_bus;

namespace notch {

// Something that a person can see or press, as a screen reader is told of it (AT-SPI 2).
struct AccessibleControl {
    bool isEnabled = false;
    int x = 0; // The middle, in pixels of the screen.
    int y = 0;

    bool operator==(const AccessibleControl&) const = default;
};

// One program of this session, read through the accessibility bus from outside. A program that does
// not run, or answers nothing, has no controls.
class AccessibleProgram {
public:
    explicit AccessibleProgram(std::string name);

    // The first showing one of that name.
    std::optional<AccessibleControl> showing(const std::string& control) const;
    // The same, asking again until `condition` holds for it; nothing after ten seconds.
    using Condition = std::function<bool(const AccessibleControl&)>;
    std::optional<AccessibleControl> waitFor(
        const std::string& control, const Condition& condition = {}) const;

private:
    std::string name_;
    std::shared_ptr<sd_bus> bus_; // Null: there is no such bus.
};

} // namespace notch
