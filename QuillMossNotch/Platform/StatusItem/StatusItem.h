// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>

namespace notch {

// The program's entry in the desktop's tray, with its menu. On a desktop without a tray it is
// simply not seen.
class StatusItem {
public:
    // Of the template only the shape counts: it is shown white on a black badge, since nobody here
    // tells a dark bar from a light one and draws the shape to suit.
    StatusItem(const QIcon& shape, const QString& description);

    // Appends to the menu.
    void add(const QString& title, std::function<void()> chosen);
    void addSeparator();
    void setToolTip(const QString& text);
    void show();

private:
    QMenu menu_;
    QSystemTrayIcon icon_;
};

} // namespace notch
