// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/StatusItem/StatusItem.h"

#include <QPainter>

#include <utility>

namespace notch {

namespace {

QPixmap whiteGlyph(const QIcon& shape, int side)
{
    QPixmap glyph = shape.pixmap(QSize(side, side));
    QPainter painter(&glyph);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(glyph.rect(), Qt::white);
    return glyph;
}

QPixmap badge(const QIcon& shape, int side)
{
    const int margin = side / 11;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(picture.rect(), side / 4.0, side / 4.0);
    painter.drawPixmap(picture.rect().adjusted(margin, margin, -margin, -margin),
        whiteGlyph(shape, side - 2 * margin));
    return picture;
}

// 18 points of glyph in the 22 that bars give an icon, and the same for a bar of twice the density.
QIcon badges(const QIcon& shape)
{
    QIcon icon;
    for (const int side : {22, 44})
        icon.addPixmap(badge(shape, side));
    return icon;
}

} // namespace

StatusItem::StatusItem(const QIcon& shape, const QString& description)
    : picture_(badges(shape))
{
    menu_.setAccessibleName(description);
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
    toolTip_ = text;
    if (icon_)
        icon_->setToolTip(text);
}

void StatusItem::show()
{
    arrival_.emplace([this] { place(); });
}

void StatusItem::place()
{
    icon_.emplace(picture_);
    icon_->setToolTip(toolTip_);
    icon_->setContextMenu(&menu_);
    // A click of either button opens the menu; trays do that only for the right one. Two in a row
    // are two clicks, since the first may have closed the menu.
    QObject::connect(&*icon_, &QSystemTrayIcon::activated, &menu_, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            menu_.popup(QCursor::pos());
    });
    icon_->show();
}

} // namespace notch
