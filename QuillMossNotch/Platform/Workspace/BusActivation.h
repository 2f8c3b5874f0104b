// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace notch {

// Asks the application of this bus name for its window, by org.freedesktop.Application: one that
// runs brings it to the front by its own means, native or not, and one that does not is started by
// the bus. `failed` runs on the main thread, later, if the application has not done so, and never
// once `context` is gone. Main thread.
void activateOnBus(QObject& context, const QString& name, std::function<void()> failed);

} // namespace notch
