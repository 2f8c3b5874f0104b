// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsPage.h"

#include "SettingsView/ConfirmBox.h"
#include "SettingsView/SettingsFooter.h"
#include "SettingsView/SettingsStyle.h"
#include "SettingsView/SettingsView.h"
#include "Style/AccessibleRole.h"

#include <QFrame>
#include <QKeyEvent>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace notch {

SettingsPage::SettingsPage(AppModel& model, const HookFlow::Surroundings& surroundings)
    : flow_(model, *this, surroundings)
    , view_(new SettingsView(model, flow_))
    , area_(new QScrollArea)
{
    setFont(settings::font(13));
    setPalette(settings::windowPalette());
    setMinimumWidth(settings::contentWidth);
    area_->setWidget(view_);
    area_->setWidgetResizable(true);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus); // The keys that scroll come from whatever has the keyboard.
    auto* const line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    setAccessibleRole(*line, QAccessible::Separator); // A frame would be a window to a reader.
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(area_, 1);
    column->addWidget(line);
    column->addWidget(new SettingsFooter(model));
    flow_.subscribe([this] { refresh(); });
}

SettingsPage::~SettingsPage()
{
    flow_.subscribe({});
}

void SettingsPage::refresh()
{
    if (auto* const result = view_->refresh())
        unseenResult_ = result;
    if (!unseenResult_ || !isVisible())
        return;
    auto* const result = std::exchange(unseenResult_, nullptr);
    // The row has no place before the layout has run.
    QTimer::singleShot(0, result, [this, result] { area_->ensureWidgetVisible(result); });
}

void SettingsPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (hasLooked())
        lookAgain();
}

// The first look waits for the first frame: on a slow disk it takes its time, and a person has the
// window and reads meanwhile that it checks.
void SettingsPage::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    if (hasLooked())
        return;
    QTimer::singleShot(0, this, [this] {
        if (!hasLooked())
            lookAgain();
    });
}

bool SettingsPage::hasLooked() const
{
    return flow_.state().configuration.state != SettingsHookConfiguration::State::checking;
}

void SettingsPage::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close))
        close();
    else
        QWidget::keyPressEvent(event);
}

bool SettingsPage::event(QEvent* event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        setPalette(settings::windowPalette()); // The desktop has another theme.
    return handled;
}

void SettingsPage::ask(const ConfirmQuestion& question, std::function<void(Answer)> answered)
{
    auto* const box = new ConfirmBox(question, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QDialog::finished, this, [answered = std::move(answered)](int code) {
        answered(code == QDialog::Accepted ? Answer::confirmed : Answer::cancelled);
    });
    box->open();
}

} // namespace notch
