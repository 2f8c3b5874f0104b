// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/StatusItem/StatusItem.h"

#include <utility>

namespace notch {

StatusItem::StatusItem(const QIcon& icon, const QString& description)
    : icon_(icon)
{
    menu_.setAccessibleName(description);
    icon_.setContextMenu(&menu_);
    // A click of either button opens the menu; trays do that only for the right one.
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &menu_, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger)
            menu_.popup(QCursor::pos());
    });
}

void StatusItem::add(const QString& title, std::function<void()> chosen)
{
    QObject::connect(menu_.addAction(title), &QAction::triggered, &menu_, std::move(chosen));
}

void StatusItem::addSeparator()
{
    menu_.addSeparator();
}

void StatusItem::setToolTip(const QString& text)
{
    icon_.setToolTip(text);
}

void StatusItem::show()
{
    icon_.show();
}

} // namespace notch
