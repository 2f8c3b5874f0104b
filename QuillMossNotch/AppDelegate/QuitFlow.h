// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppDelegate/QuitEffects.h"
#include "AppModel/AppModel.h"
#include "Foundation/Time.h"

#include <optional>

namespace notch {

// Decides whether the program ends while requests wait. However it ends, no request is answered by
// it: the hooks see their connections closed, and the host's own flow takes over.
//
//   who asks                      with real requests waiting
//   the person (menu, settings)   a question; ends only on "leave"
//   another program, once         refused; the notch opens and shows what waits
//   a signal, again within        ends: a service manager and a terminal must be able to stop it
//     signalPatience
//
// Without a request, or with a demonstration only, each of them ends the program. Main thread.
class QuitFlow {
public:
    static constexpr Seconds signalPatience{2};

    // Both are borrowed and must outlive it.
    QuitFlow(AppModel& model, QuitEffects& effects);

    // The person asked.
    void quit();
    // SIGTERM or SIGINT came.
    void signalled(Uptime now);
    // Any termination from outside asks here whether it may go on; if not, the notch has opened.
    bool shouldTerminate();
    // The question is on the screen, and the notch is not.
    bool isAsking() const { return confirmingQuit_; }

private:
    bool realRequestsWait() const;
    void ask();
    void answered(QuitEffects::Answer answer);

    AppModel& model_;
    QuitEffects& effects_;
    bool explicitQuit_ = false; // Confirmed, or there was nothing to confirm.
    bool confirmingQuit_ = false;
    bool panelWasOnScreen_ = false; // When the question came up.
    std::optional<Uptime> refusedSignal_;
};

} // namespace notch
