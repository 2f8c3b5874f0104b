// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <bitset>
#include <cstddef>
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
// What a preference reads as until it is first written.
bool defaultValue(Preference preference);

// The user's preferences store. Main thread.
class Preferences {
public:
    virtual ~Preferences() = default;
    virtual bool isOn(Preference preference) const = 0;
    virtual void set(Preference preference, bool on) = 0;
};

// The positions of all five, as a value; at first the defaults.
class Switches {
public:
    Switches();
    static Switches storedIn(const Preferences& preferences);

    bool isOn(Preference preference) const { return on_.test(index(preference)); }
    void set(Preference preference, bool on) { on_.set(index(preference), on); }

    bool operator==(const Switches&) const = default;

private:
    static std::size_t index(Preference preference) { return static_cast<std::size_t>(preference); }

    std::bitset<allPreferences.size()> on_;
};

} // namespace notch
