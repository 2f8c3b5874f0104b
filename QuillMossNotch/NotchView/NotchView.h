// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "Foundation/Time.h"
#include "NotchView/Announcements.h"
#include "NotchView/DisplayState.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <optional>

namespace notch {

class Announcer;
class ApprovalSection;
class CompactButton;
class CompletionSection;
class HeaderSection;
class IdleSection;
class QuestionSection;
class ReceiptSection;
class TextLine;

// Everything that the notch shows, closed and open, on a black ground that its host draws. Reads
// the model's state, calls its operations and decides nothing.
//
// A section is built when it is first needed, so that a resident that nobody needs holds none. From
// then on refresh() only changes its texts and whether it is visible, so that no redraw moves the
// focus, loses a scroll position or swallows a press. The approval's section goes with the last
// request, and with it what a large one takes.
//
//     NotchView view(model, clock);
//     model.subscribe(…);                       // schedules a layout pass, which does:
//     view.refresh();
//     view.resize(panelWidth, view.fit(panelWidth, screenHeight));
class NotchView final : public QWidget {
public:
    // Both are borrowed and must outlive the view.
    NotchView(AppModel& model, const Clock& clock, QWidget* parent = nullptr);
    ~NotchView() override;

    // Shows the model's present state: the compact strip, and below it the open content when
    // state().isExpanded(). Cheap when nothing has changed.
    void refresh();
    // Fits the present content into this width and, as far as it can be, into this height: its
    // texts scroll then. Returns the height that it needs, in points; call refresh() first.
    int fit(int width, int maxHeight);
    // The desktop asks for less motion; false until told.
    void setReducesMotion(bool reduces);
    // What can be pressed here; nothing while neither a request nor a reminder is on show.
    std::optional<ShownDecision> decision() const;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    void showOpenContent();
    void present(DisplayState shown);
    template <class Section, class... Needs> Section& built(Section*& section, Needs&... needs);
    void dropApproval();
    void showFailure();
    int neededHeight(int width) const;
    void shrink(int width, int points);
    void tick();
    void announce();

    AppModel& model_;
    const Clock& clock_;
    std::optional<AppModelState> state_; // On show.
    Announcements announcements_;
    QTimer tick_{this}; // Runs only while a request with a deadline is on the screen.
    CompactButton* compact_;
    QWidget* content_;
    HeaderSection* header_;
    // One of these is on show at most; null until it is needed.
    ApprovalSection* approval_ = nullptr;
    ReceiptSection* receipt_ = nullptr;
    QuestionSection* question_ = nullptr;
    CompletionSection* completion_ = nullptr;
    IdleSection* idle_ = nullptr;
    TextLine* failure_; // Below whatever the notch shows.
    Announcer* announcer_;
    QPointer<QWidget> dropped_; // To be deleted.
    bool reducesMotion_ = false;
};

} // namespace notch
