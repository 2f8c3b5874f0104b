// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/HeaderSection.h"

#include "NotchView/HeaderContent.h"
#include "Style/IconButton.h"
#include "Style/NotchStyle.h"
#include "Style/ResourceIcon.h"
#include "Style/SymbolPath.h"
#include "Style/TextLine.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

namespace notch {
namespace {

constexpr int avatarSide = 34;
constexpr double avatarSymbolSide = 18;

} // namespace

// Says nothing that the text beside it does not say; screen readers pass over it.
class HeaderSection::Avatar final : public QWidget {
public:
    explicit Avatar(QWidget* parent)
        : QWidget(parent)
    {
        const auto icon = resourceIcon(QStringLiteral("BrandAvatar"));
        const QSize side(avatarSide, avatarSide);
        picture_ = icon.pixmap(2 * side, 1);
        small_ = icon.pixmap(side, 1);
        setFixedSize(avatarSide, avatarSide);
    }

    void setSymbol(Symbol symbol)
    {
        symbol_ = symbol;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (!picture_.isNull()) {
            painter.drawPixmap(rect(), devicePixelRatioF() > 1 ? picture_ : small_);
            return;
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(style::white(0.12));
        painter.drawEllipse(rect());
        QRectF square(0, 0, avatarSymbolSide, avatarSymbolSide);
        square.moveCenter(QRectF(rect()).center());
        paintSymbol(painter, square, symbol_, style::text);
    }

private:
    QPixmap picture_; // At twice the size, from which it comes down to any scale.
    QPixmap small_;
    Symbol symbol_ = Symbol::none;
};

HeaderSection::HeaderSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , avatar_(new Avatar(this))
    , text_(new TextLine(style::font(13, QFont::Medium), style::text, this))
    , settings_(new IconButton(Symbol::sliderHorizontal3, this))
    , close_(new IconButton(Symbol::xmark, this))
{
    text_->setObjectName(QStringLiteral("header-text"));
    settings_->setObjectName(QStringLiteral("header-settings"));
    close_->setObjectName(QStringLiteral("header-close"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(avatar_);
    row->addWidget(text_, 1);
    row->addWidget(settings_);
    row->addSpacing(-2); // There are 8 points between the two icon buttons.
    row->addWidget(close_);
    connect(settings_, &QAbstractButton::clicked, this, [this] { settingsClicked(); });
    connect(close_, &QAbstractButton::clicked, this, [this] { model_.collapse(); });
}

void HeaderSection::present(const HeaderContent& content)
{
    avatar_->setSymbol(content.avatar);
    text_->setContent(Symbol::none, content.text);
    settings_->setContent(Symbol::sliderHorizontal3, content.settingsLabel);
    close_->setContent(Symbol::xmark, content.closeLabel, content.closeToolTip);
}

void HeaderSection::settingsClicked()
{
    if (model_.state().isDemo)
        model_.endDemo();
    else if (model_.showSettings)
        model_.showSettings();
}

} // namespace notch
