// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Services/Preferences.h"

#include <QSettings>

namespace notch {

// The preferences in a small text file of the user. A switch that the file does not hold, or holds
// as anything but a boolean, reads as its default.
class SettingsPreferences final : public Preferences {
public:
    explicit SettingsPreferences(const QString& file);

    // Where the desktop keeps this user's preferences.
    static QString defaultFile();

    bool isOn(Preference preference) const override;
    void set(Preference preference, bool on) override;

private:
    QSettings settings_;
};

} // namespace notch
