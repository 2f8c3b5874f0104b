// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/QuitFlow.h"

namespace notch {

QuitFlow::QuitFlow(AppModel& model, QuitEffects& effects)
    : model_(model)
    , effects_(effects)
{
}

void QuitFlow::quit()
{
    if (confirmingQuit_)
        return;
    if (realRequestsWait()) {
        ask();
        return;
    }
    explicitQuit_ = true;
    effects_.terminate();
}

void QuitFlow::signalled(Uptime now)
{
    const bool again = refusedSignal_ && now - *refusedSignal_ <= signalPatience;
    if (again || shouldTerminate())
        effects_.terminate();
    else
        refusedSignal_ = now;
}

bool QuitFlow::shouldTerminate()
{
    if (explicitQuit_ || !realRequestsWait())
        return true;
    model_.expand();
    return false;
}

bool QuitFlow::realRequestsWait() const
{
    return !model_.state().isDemo && !model_.state().interaction.requests().empty();
}

void QuitFlow::ask()
{
    confirmingQuit_ = true;
    // The notch is above every window, the question included.
    panelWasOnScreen_ = effects_.panelIsOnScreen();
    effects_.orderPanelOut();
    const auto count = std::to_string(model_.state().interaction.requests().size());
    effects_.ask(
        {
            .message = "还有 " + count + " 条请求待确认",
            .informativeText = "退出会把它们交回 QuillMoss 原流程，不会自动允许。",
            .stay = "继续查看",
            .leave = "交回 QuillMoss 并退出",
        },
        [this](QuitEffects::Answer answer) { answered(answer); });
}

void QuitFlow::answered(QuitEffects::Answer answer)
{
    if (answer == QuitEffects::Answer::leave) {
        explicitQuit_ = true;
        confirmingQuit_ = false;
        effects_.terminate();
        return;
    }
    model_.expand();
    confirmingQuit_ = false;
    if (panelWasOnScreen_ && !explicitQuit_)
        effects_.orderPanelFront();
}

} // namespace notch
