// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchPanel/NotchPanel.h"
#include "NotchPanel/VerticalRevealAnimator.h"
#include "NotchView/NotchView.h"
#include "Platform/Display/ServerClock.h"

#include <QObject>

#include <optional>

namespace notch {

// Knows which decision, or which step of a reminder, a person has before their eyes, and tells the
// model whenever that changes. It is on show from the first frame that
//  - has been drawn with it and done by the server,
//  - on a panel that is on the screen and not hidden by other windows or a screen locker,
//  - with its buttons uncovered by the reveal,
// for as long as none of this changes and the buttons stay where they are. Main thread.
class DecisionWatch final : public QObject, public DecisionDisplay {
public:
    // All must outlive it. The panel has its content by now.
    DecisionWatch(AppModel& model, NotchPanel& panel, const NotchView& view,
        const VerticalRevealAnimator& animator);
    ~DecisionWatch() override;
    Q_DISABLE_COPY_MOVE(DecisionWatch)

    // Other windows have hidden the surface, or have left a part of it again.
    void beginAnew();
    // A screen locker has come on or gone off; nothing is on show while it is on.
    void setLocked(bool locked);

    std::optional<ShownDecision> onShow() const override;
    std::optional<InputTime> inputTime() const override;
    Seconds doubleClickInterval() const override;

private:
    bool eventFilter(QObject* object, QEvent* event) override;
    std::optional<ShownDecision> inSight() const;
    void drawing();
    void frameDone();
    void forget();

    AppModel& model_;
    NotchPanel& panel_;
    const NotchView& view_;
    const VerticalRevealAnimator& animator_;
    ServerClock serverClock_;
    bool locked_ = false;
    bool drawing_ = false; // A frame is on its way to the server.
    std::optional<ShownDecision> drawn_; // In that frame.
    std::optional<ShownDecision> shown_; // In the last frame that the server has done.
};

} // namespace notch
