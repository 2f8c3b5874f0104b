// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace notch {

// The person's five switches.
enum class Preference : std::uint8_t {
    hoverToExpand,
    autoCollapse,
    nativeApprovalsEnabled,
    questionRemindersEnabled,
    completionRemindersEnabled,
};

inline constexpr std::array allPreferences{Preference::hoverToExpand, Preference::autoCollapse,
    Preference::nativeApprovalsEnabled, Preference::questionRemindersEnabled,
    Preference::completionRemindersEnabled};

// The key in the store.
std::string_view name(Preference preference);
// What a preference reads as until somebody writes it.
bool defaultValue(Preference preference);

// The user's preferences store. Main thread.
class Preferences {
public:
    virtual ~Preferences() = default;
    virtual bool isOn(Preference preference) const = 0;
    virtual void set(Preference preference, bool on) = 0;
};

} // namespace notch
