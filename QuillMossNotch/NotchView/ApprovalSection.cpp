// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/ApprovalSection.h"

#include "NotchView/DecisionSection.h"
#include "NotchView/SwitcherSection.h"
#include "Style/ActionButton.h"
#include "Style/NotchStyle.h"
#include "Style/TextBlock.h"
#include "Style/TextLine.h"
#include "Style/YieldingArea.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <utility>

namespace notch {
namespace {

constexpr int maxDescriptionHeight = 58;
constexpr int maxCommandHeight = 112;
constexpr int maxDetailsHeight = 176;

} // namespace

ApprovalSection::ApprovalSection(AppModel& model, const Clock& clock, QWidget* parent)
    : QWidget(parent)
    , model_(model)
    , clock_(clock)
    , told_(new QWidget)
    , banner_(new TextLine(style::font(10, QFont::Medium), style::warning, told_))
    , title_(new TextLine(style::font(18, QFont::DemiBold), style::text, told_))
    , chip_(new TextLine(style::font(10), style::white(0.75), told_))
    , origin_(new TextLine(style::font(11), style::white(0.7), told_))
    , source_(new TextLine(style::font(11), style::white(0.5), told_))
    , description_(new TextBlock(style::font(12), style::white(0.82), maxDescriptionHeight,
          TextBlock::Ground::absent, told_))
    , detailsHeader_(new TextLine(style::font(11, QFont::Medium), style::white(0.7), told_))
    , detailsChip_(new TextLine(style::font(9, QFont::Medium), style::warning, told_))
    , command_(new TextBlock(style::monospaced(12), style::white(0.95), maxCommandHeight,
          TextBlock::Ground::filled, told_))
    , parameters_(new TextBlock(style::monospaced(12), style::white(0.95), maxDetailsHeight,
          TextBlock::Ground::filled, told_))
    , toggle_(new ActionButton(NotchActionStyle::Role::plain, told_))
    , copy_(new ActionButton(NotchActionStyle::Role::plain, told_))
    , toldArea_(new YieldingArea(told_, this))
    , decision_(new DecisionSection(model, this))
    , switcher_(new SwitcherSection(model, this))
{
    setObjectName(QStringLiteral("approval"));
    title_->setObjectName(QStringLiteral("approval-title"));
    origin_->setObjectName(QStringLiteral("approval-origin"));
    source_->setObjectName(QStringLiteral("approval-source"));
    for (const auto& [block, name, heard] : {
             std::tuple(description_, "approval-description", "原请求说明"),
             {command_, "approval-command", "请求内容"},
             {parameters_, "approval-parameters", "完整参数"},
         }) {
        block->setObjectName(QLatin1String(name));
        block->setAccessibleName(toQString(heard));
    }
    told_->setLayout(buildRequest());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(toldArea_);
    column->addWidget(decision_);
    column->addWidget(switcher_);
}

QLayout* ApprovalSection::buildRequest()
{
    auto* const column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(banner_);
    column->addLayout(buildTitle());
    column->addLayout(buildOrigin());
    column->addWidget(description_);
    column->addLayout(buildDetailsHeader());
    column->addWidget(command_);
    column->addWidget(parameters_);
    column->addLayout(buildDetailsBar());
    return column;
}

QLayout* ApprovalSection::buildTitle()
{
    title_->setWraps();
    chip_->setChip();
    auto* const row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(title_, 1);
    row->addWidget(chip_, 0, Qt::AlignTop);
    return row;
}

QLayout* ApprovalSection::buildOrigin()
{
    origin_->setElidesMiddle();
    source_->setElidesMiddle();
    auto* const column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(origin_);
    column->addWidget(source_);
    return column;
}

QLayout* ApprovalSection::buildDetailsHeader()
{
    detailsHeader_->setObjectName(QStringLiteral("details-header"));
    detailsHeader_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    detailsChip_->setObjectName(QStringLiteral("details-chip"));
    detailsChip_->setChip();
    auto* const row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(detailsHeader_);
    row->addWidget(detailsChip_);
    row->addStretch(1);
    return row;
}

QLayout* ApprovalSection::buildDetailsBar()
{
    toggle_->setCompact();
    toggle_->setObjectName(QStringLiteral("details-toggle"));
    copy_->setCompact();
    copy_->setObjectName(QStringLiteral("details-copy"));
    setPlainToolTip(*copy_, copyToolTip);
    connect(toggle_, &QAbstractButton::clicked, this,
        [this] { model_.setShowAllParameters(!model_.state().interaction.showAllParameters); });
    connect(copy_, &QAbstractButton::clicked, this, [this] { copyClicked(); });
    auto* const row = new QHBoxLayout;
    row->addWidget(toggle_);
    row->addStretch(1);
    row->addWidget(copy_);
    return row;
}

void ApprovalSection::present(const AppModelState& state)
{
    const auto& request = *state.interaction.current();
    if (request_ != request)
        showRequest(request);
    // A notch that is opened again while it closes has not hidden its texts.
    if (!std::exchange(open_, state.interaction.expanded()))
        rewind();
    showDetails(state);
    decision_->present(request, state.actionReady);
    switcher_->present(state.interaction);
    showTime();
}

void ApprovalSection::showRequest(const ApprovalRequest& request)
{
    request_ = request;
    rewind();
    const ApprovalContent content(request);
    banner_->setContent(Symbol::exclamationmarkShield, content.banner);
    banner_->setVisible(!content.banner.empty());
    title_->setContent(Symbol::none, content.title);
    setPlainToolTip(*title_, content.wholeTitle); // Tools and directories can have long names.
    chip_->setContent(Symbol::none, content.chip);
    origin_->setContent(content.originSymbol, content.origin);
    setPlainToolTip(*origin_, content.origin);
    source_->setContent(Symbol::none, content.source);
    setPlainToolTip(*source_, content.sourceToolTip);
    description_->setContent(content.description);
    description_->setLeadIn(toQString(descriptionLeadIn).size(),
        content.isNative ? style::warning : style::white(0.55));
    description_->setVisible(!content.description.empty());
    detailsHeader_->setContent(Symbol::none, content.detailsHeader);
    detailsChip_->setContent(Symbol::none, content.detailsChip);
    command_->setContent(content.command);
    parameters_->setContent(content.parameters);
    decision_->setContent(content);
}

void ApprovalSection::showDetails(const AppModelState& state)
{
    const bool open = state.interaction.showAllParameters;
    command_->setVisible(!open);
    parameters_->setVisible(open);
    detailsHeader_->setVisible(open);
    detailsChip_->setVisible(open && !detailsChip_->text().isEmpty());
    const auto toggle = detailsToggle(state.interaction);
    toggle_->setContent(toggle.symbol, toggle.text);
    const auto copy = copyButton(*request_, state.copiedRequestID);
    copy_->setContent(copy.symbol, copy.text);
}

void ApprovalSection::rewind()
{
    for (auto* const block : {description_, command_, parameters_})
        block->rewind();
    toldArea_->verticalScrollBar()->setValue(0);
}

void ApprovalSection::shrink(int width, int points)
{
    auto* const text = parameters_->isHidden() ? command_ : parameters_;
    for (auto* const block : {description_, text})
        block->setHeightLimit(block->maxHeight());
    for (const auto& [block, rows] :
        {std::pair(description_, 2), {text, 3}, {description_, 1}, {text, 1}}) {
        if (block->isHidden())
            continue;
        const int height = block->heightForWidth(width);
        const int given = std::clamp(height - block->heightOfRows(rows), 0, points);
        block->setHeightLimit(height - given);
        points -= given;
    }
    toldArea_->giveWay(points);
}

std::optional<Seconds> ApprovalSection::showTime()
{
    const auto line = TimeLine::of(*request_, clock_.now());
    decision_->showTime(line);
    return line ? std::optional(line->nextChange) : std::nullopt;
}

ShownDecision ApprovalSection::decision() const
{
    return {.requestID = request_->id,
        .showsAllParameters = !parameters_->isHidden(),
        .buttons = decision_->buttons(),
        .reminder = std::nullopt};
}

void ApprovalSection::copyClicked()
{
    const auto* current = model_.state().interaction.current();
    if (current && request_ && current->id == request_->id)
        model_.copyRequest(*current);
}

} // namespace notch
