// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/SettingsWindow.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace notch {

using namespace Qt::StringLiterals;

SettingsWindow::SettingsWindow(AppModel& model)
    : model_(model)
{
}

void SettingsWindow::show()
{
    if (!view_)
        build();
    model_.refreshConfiguredProfiles();
    view_->refresh();
    view_->setWindowState(view_->windowState() & ~Qt::WindowMinimized);
    view_->show();
    view_->raise();
    view_->activateWindow();
}

void SettingsWindow::refresh()
{
    if (view_ && view_->isVisible())
        view_->refresh();
}

void SettingsWindow::build()
{
    constexpr int width = 600;
    constexpr int tallest = 680;
    constexpr int margin = 80; // Kept free of it on a low screen.
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QRect visible = screen ? screen->availableGeometry() : QRect(0, 0, width, 720);

    view_.emplace(model_);
    view_->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                          | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    view_->setWindowTitle(u"QuillMoss Notch · 接入与交互"_s);
    view_->setFixedSize(width, std::min(tallest, visible.height() - margin));
    view_->move(visible.center() - view_->rect().center());
}

} // namespace notch
