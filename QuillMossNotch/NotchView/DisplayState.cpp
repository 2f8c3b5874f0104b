// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/DisplayState.h"

namespace notch {

DisplayState displayState(const AppModelState& state)
{
    if (state.interaction.feedback())
        return DisplayState::receipt;
    if (state.interaction.current())
        return DisplayState::approval;
    if (state.questionState.visible())
        return DisplayState::question;
    if (state.completionState.current
        && state.switches.isOn(Preference::completionRemindersEnabled))
        return DisplayState::completion;
    return DisplayState::idle;
}

} // namespace notch
