// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/Announcer.h"

#include "Style/AccessibleRole.h"
#include "Style/NotchStyle.h"

namespace notch {

Announcer::Announcer(QWidget* parent)
    : QWidget(parent)
{
    setAccessibleRole(*this, QAccessible::Notification);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedSize(1, 1);
}

void Announcer::announce(const std::string& text)
{
    setAccessibleName(toQString(text));
    QAccessibleEvent shown(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

} // namespace notch
