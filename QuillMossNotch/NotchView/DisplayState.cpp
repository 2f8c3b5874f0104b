// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchView/DisplayState.h"

namespace notch {

ShownFeatures::ShownFeatures(const Preferences& preferences)
    : nativeEnabled(preferences.isOn(Preference::nativeApprovalsEnabled))
    , questionsEnabled(preferences.isOn(Preference::questionRemindersEnabled))
    , completionsEnabled(preferences.isOn(Preference::completionRemindersEnabled))
{
}

DisplayState displayState(const AppModelState& state, const ShownFeatures& features)
{
    if (state.interaction.feedback())
        return DisplayState::receipt;
    if (state.interaction.current())
        return DisplayState::approval;
    if (state.questionVisible)
        return DisplayState::question;
    if (state.completionVisible && features.completionsEnabled)
        return DisplayState::completion;
    return DisplayState::idle;
}

} // namespace notch
