// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/Preferences.h"

#include <map>

namespace notch {

// Preferences that nobody has written yet.
class FakePreferences final : public Preferences {
public:
    bool isOn(Preference preference) const override
    {
        const auto written = written_.find(preference);
        return written == written_.end() ? defaultValue(preference) : written->second;
    }
    void set(Preference preference, bool on) override { written_[preference] = on; }

private:
    std::map<Preference, bool> written_;
};

} // namespace notch
