// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Workspace/BusActivation.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace notch {

using namespace Qt::StringLiterals;

namespace {

QString objectPath(const QString& name)
{
    QString path = u'/' + name;
    return path.replace(u'.', u'/').replace(u'-', u'_');
}

} // namespace

void activateOnBus(QObject& context, const QString& name, std::function<void()> failed)
{
    auto call = QDBusMessage::createMethodCall(
        name, objectPath(name), u"org.freedesktop.Application"_s, u"Activate"_s);
    call << QVariantMap(); // No token of an activation: the X server has none to give.
    auto* const answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), &context);
    QObject::connect(
        answer, &QDBusPendingCallWatcher::finished, &context, [answer, failed = std::move(failed)] {
            answer->deleteLater();
            if (answer->isError())
                failed();
        });
}

} // namespace notch
