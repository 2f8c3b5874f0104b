// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

namespace notch {

// The way to end the program, always in sight below the settings.
class SettingsFooter final : public QWidget {
public:
    // Borrowed.
    explicit SettingsFooter(AppModel& model);
};

} // namespace notch
