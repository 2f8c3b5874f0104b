// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/AXValue.h"
#include "Native/Tree/ScreenRect.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// Whether the desktop lets this process read and press other programs' windows.
class AccessibilityTrust {
public:
    virtual ~AccessibilityTrust() = default;
    virtual bool isProcessTrusted() = 0;
    // Asks the desktop for it; the person has clicked for this.
    virtual void requestTrust() = 0;
};

// Every call that the observation of the host makes into the host. One thread at a time. A call
// waits for the host at most `callTimeout`; one that cannot be held to this, or gets no answer, has
// failed, which is an empty result.
class Accessibility {
public:
    static constexpr Seconds callTimeout{0.06};

    virtual ~Accessibility() = default;

    // This process may read other programs' windows at this moment.
    virtual bool isProcessTrusted() = 0;

    // The element that represents a whole process.
    virtual std::optional<AXElement> application(std::int32_t pid) = 0;
    // Tells the program that its windows are being read, for those that build their tree only then.
    // Once a scan; whether it helped shows in what is read.
    virtual void setManualAccessibility(const AXElement& application) = 0;
    virtual std::optional<AXValue> attribute(const AXElement& element, std::string_view name) = 0;
    // All of them in one round trip, in this order. An attribute that could not be read is an
    // AXError in its place; a failed result means that the element could not be read at all.
    virtual std::optional<std::vector<AXValue>> attributes(
        const AXElement& element, std::span<const std::string_view> names) = 0;
    virtual std::optional<std::int32_t> pidOf(const AXElement& element) = 0;
    virtual std::optional<std::vector<std::string>> actionNames(const AXElement& element) = 0;
    // True: the press was delivered. What the host does with it is not known.
    virtual bool press(const AXElement& element) = 0;

    // The tree of this window will be read now with attributes(), as far down as shownInWindow()
    // and childrenAreRead() go, and until the deadline. An implementation may fetch it ahead, many
    // calls at a time, and answer from that until forget().
    virtual void prefetch(const AXElement& window, const ScreenRect& frame, Uptime deadline) = 0;
    virtual void forget() = 0;
};

} // namespace notch
