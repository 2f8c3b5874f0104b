// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace notch {

// One element of another program's window. The same element gives equal handles in every scan, and
// no handle is ever used again for another one.
struct AXElement {
    std::string owner; // The program, by a name that is its own for as long as it runs.
    std::string path; // The element within the program.

    // Stable within this process.
    std::size_t hash() const
    {
        return std::hash<std::string>{}(owner)*31 + std::hash<std::string>{}(path);
    }
    bool operator==(const AXElement&) const = default;
};

struct AXElementHash {
    std::size_t operator()(const AXElement& element) const { return element.hash(); }
};

struct AXNull {
    bool operator==(const AXNull&) const = default;
};
// A value of a kind that nothing here reads, such as a number.
struct AXOther {
    bool operator==(const AXOther&) const = default;
};
struct AXPoint {
    double x = 0;
    double y = 0;
    bool operator==(const AXPoint&) const = default;
};
struct AXSize {
    double width = 0;
    double height = 0;
    bool operator==(const AXSize&) const = default;
};
// Takes the place of an attribute that could not be read.
struct AXError {
    static constexpr int noValue = -25212;
    static constexpr int attributeUnsupported = -25205;
    int code = 0;
    bool operator==(const AXError&) const = default;
};
using AXElements = std::vector<AXElement>;

// The value of one attribute.
using AXValue = std::variant<AXNull, AXOther, AXError, bool, std::string, AXPoint, AXSize,
    AXElement, AXElements>;

// Names of attributes and actions.
namespace ax {
inline constexpr std::string_view role = "AXRole";
inline constexpr std::string_view title = "AXTitle";
inline constexpr std::string_view value = "AXValue";
inline constexpr std::string_view description = "AXDescription";
inline constexpr std::string_view enabled = "AXEnabled";
inline constexpr std::string_view hidden = "AXHidden";
inline constexpr std::string_view children = "AXChildren";
inline constexpr std::string_view position = "AXPosition";
inline constexpr std::string_view size = "AXSize";
inline constexpr std::string_view windows = "AXWindows";
inline constexpr std::string_view mainWindow = "AXMainWindow";
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";
inline constexpr std::string_view minimized = "AXMinimized";
inline constexpr std::string_view press = "AXPress";
} // namespace ax

} // namespace notch
