// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Toolkit/Toolkit.h"

namespace notch {

using namespace Qt::StringLiterals;

Toolkit::Toolkit(Platform platform)
    : platform_(platform == Platform::x11 ? "xcb" : "offscreen")
    , arguments_{program_.data(), flag_.data(), platform_.data(), nullptr}
    , application_(count_, arguments_.data())
{
    QApplication::setApplicationName(u"QuillMossNotch"_s);
    QApplication::setDesktopFileName(u"local.quillmoss.notch"_s);
}

} // namespace notch
