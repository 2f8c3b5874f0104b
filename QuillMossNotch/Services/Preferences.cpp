// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Services/Preferences.h"

namespace notch {

std::string_view name(Preference preference)
{
    switch (preference) {
    case Preference::hoverToExpand:
        return "hoverToExpand";
    case Preference::autoCollapse:
        return "autoCollapse";
    case Preference::nativeApprovalsEnabled:
        return "nativeApprovalsEnabled";
    case Preference::questionRemindersEnabled:
        return "questionRemindersEnabled";
    case Preference::completionRemindersEnabled:
        return "completionRemindersEnabled";
    }
    return "";
}

bool defaultValue(Preference preference)
{
    switch (preference) {
    case Preference::hoverToExpand:
    case Preference::autoCollapse:
    case Preference::questionRemindersEnabled:
        return true;
    case Preference::nativeApprovalsEnabled:
    case Preference::completionRemindersEnabled:
        return false;
    }
    return false;
}

Switches::Switches()
{
    for (const auto preference : allPreferences)
        set(preference, defaultValue(preference));
}

Switches Switches::storedIn(const Preferences& preferences)
{
    Switches stored;
    for (const auto preference : allPreferences)
        stored.set(preference, preferences.isOn(preference));
    return stored;
}

} // namespace notch
