// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace notch {

// A picture of the settings in each of their states; false when one could not be written.
bool writeSettingsPictures(const QString& folder);

} // namespace notch
