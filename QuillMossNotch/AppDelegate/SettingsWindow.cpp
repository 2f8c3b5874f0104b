// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/SettingsWindow.h"

#include "Style/AccessibleRole.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace notch {

using namespace Qt::StringLiterals;

SettingsWindow::SettingsWindow(AppModel& model, HookFlow::Surroundings surroundings)
    : model_(model)
    , surroundings_(std::move(surroundings))
{
}

void SettingsWindow::show()
{
    if (!page_)
        build();
    model_.refreshConfiguredProfiles();
    if (page_->isVisible())
        page_->lookAgain();
    page_->setWindowState(page_->windowState() & ~Qt::WindowMinimized);
    page_->show();
    page_->raise();
    page_->activateWindow();
}

void SettingsWindow::refresh()
{
    if (page_ && page_->isVisible())
        page_->refresh();
}

void SettingsWindow::build()
{
    constexpr int width = 600;
    constexpr int tallest = 680;
    constexpr int margin = 80; // Kept free of it on a low screen.
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QRect visible = screen ? screen->availableGeometry() : QRect(0, 0, width, 720);

    page_.emplace(model_, surroundings_);
    page_->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                          | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    page_->setWindowTitle(u"QuillMoss Notch · 接入与交互"_s);
    setAccessibleRole(*page_, QAccessible::Window);
    page_->setFixedSize(width, std::min(tallest, visible.height() - margin));
    page_->move(visible.center() - page_->rect().center());
}

} // namespace notch
