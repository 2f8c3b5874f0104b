// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pasteboard/ClipboardPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace notch {

void ClipboardPasteboard::setText(const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace notch
