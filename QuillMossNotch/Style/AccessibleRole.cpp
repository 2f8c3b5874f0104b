// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace notch {
namespace {

constexpr const char* roleProperty = "notchAccessibleRole";

QAccessibleInterface* describe(const QString&, QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    const auto role = widget ? widget->property(roleProperty) : QVariant();
    return role.isValid()
             ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()))
             : nullptr;
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    QAccessible::installFactory(describe); // Once: the toolkit keeps each only once.
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace notch
