// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QImage>

class QWidget;

namespace notch {

// A picture of a widget at its present size, with everything transparent that it does not paint.
// The widget need not be on a screen.
QImage pictureOf(QWidget& widget);

// A picture of the notch as it hangs from the screen, in the model's present state.
QImage pictureOfNotch(AppModel& model, const Clock& clock);

} // namespace notch
