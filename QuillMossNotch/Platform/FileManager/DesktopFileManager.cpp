// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/FileManager/DesktopFileManager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QUrl>

#include <gio/gio.h>

namespace notch {

using namespace Qt::StringLiterals;

namespace {

// A file manager may have to be started first.
constexpr int patienceMilliseconds = 5'000;

void openFolder(const QString& path)
{
    const auto folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath()).toEncoded();
    g_app_info_launch_default_for_uri(folder.constData(), nullptr, nullptr);
}

} // namespace

void DesktopFileManager::showItem(const std::string& path)
{
    const auto item = QString::fromStdString(path);
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
        u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList(QString::fromLatin1(QUrl::fromLocalFile(item).toEncoded())) << QString();
    auto* const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, patienceMilliseconds),
        QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, item] {
        watcher->deleteLater();
        if (watcher->isError())
            openFolder(item);
    });
}

} // namespace notch
