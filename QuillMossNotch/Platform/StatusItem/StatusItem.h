// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/StatusItem/TrayArrival.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>
#include <optional>

namespace notch {

// The program's entry in the desktop's tray, with its menu. It is not seen before the desktop has a
// tray.
class StatusItem {
public:
    // Only the template's shape counts: it is shown white on a black badge, since this
    // platform does not say whether a bar is dark or light.
    StatusItem(const QIcon& shape, const QString& description);

    // Appends to the menu.
    void add(const QString& title, std::function<void()> chosen);
    void addSeparator();
    void setToolTip(const QString& text);
    void show();

private:
    void place();

    QIcon picture_;
    QString toolTip_;
    QMenu menu_;
    std::optional<QSystemTrayIcon> icon_; // From the tray's arrival on.
    std::optional<TrayArrival> arrival_;
};

} // namespace notch
