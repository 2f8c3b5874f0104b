// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QString>

namespace notch {

// A picture of the program's own, at both of its sizes: :/notch/<name>.png and its @2x.
QIcon resourceIcon(const QString& name);

} // namespace notch
