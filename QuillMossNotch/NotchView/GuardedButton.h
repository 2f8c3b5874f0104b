// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/DecisionDisplay.h"
#include "Geometry/Rect.h"
#include "Style/ActionButton.h"

#include <optional>

namespace notch {

// A button whose click counts only when its press did, and it makes no difference which device they
// come from: a pointer, a finger, a key, a screen reader's action.
//
// A press is taken once, when it begins. The base class reports another one when a pointer that is
// held down leaves the button and comes back; that one may lie in a later armed time and is not a
// press that the person made for it.
class GuardedButton : public ActionButton {
public:
    GuardedButton(NotchActionStyle::Role role, QWidget* parent);

    // Where it is.
    Rect onDesktop() const;

protected:
    // The person has pressed it. `at`: nothing by a screen reader.
    virtual void takePress(const std::optional<InputTime>& at) = 0;
    // The press that was taken last counts for nothing any more.
    virtual void dropPress() = 0;
    // The person has let go on it, or by a key.
    virtual void usePress() = 0;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void expectPress(quint64 timestamp);
    void beginPress();
    void click();
    void forgetPress();

    std::optional<InputTime> acted_; // When the press was made; nothing by a screen reader.
    bool held_ = false; // A press has begun and not ended.
};

} // namespace notch
