// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/ReminderCallbacks.h"
#include "AppModel/SharedNotch.h"
#include "Foundation/Result.h"
#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Interaction/CompletionReminderState.h"
#include "TurnEnd/CompletionChannel.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace notch {

class QuestionReminders;

// What everybody may know of a CompletionReminderState. The turns that it remembers can be
// thousands and concern nobody else.
struct CompletionOffer {
    std::optional<CompletionReminder> current; // The reminder on offer.
    bool hasBeenPresented = false; // It has had its one automatic presentation.
    std::size_t queuedCount = 0; // The current one counts.
    std::size_t trackedSessionCount = 0;

    bool operator==(const CompletionOffer&) const = default;
};

// The model's part for turns that ended while the host was in the background. Each opens the notch
// once by itself and offers to bring the host to the front; nothing is said of how a task went.
//
//   what could be out of date             is stopped by
//   an event of a channel that stopped    epoch_
//   an end seen in another situation      environmentChangedAt_
//   an arming timer                       armingWork_ (ends with disarm), armingToken_
//   a second activation, and any arming
//   after an activation that failed       actionConsumed_
//   a click or timer of an older one      the reminder's token
//
// Main thread.
class CompletionReminders {
public:
    // Whether this executable's turn-end hook is installed; or why nobody can tell.
    using HookCheck = std::function<Result<bool, std::string>()>;

    // What it works with, borrowed except the check; all must outlive it.
    struct Dependencies {
        const Clock& clock;
        const ReminderCallbacks& host;
        CompletionChannel& channel;
        HookCheck hookInstalled;
    };

    // A visible question goes before every turn end.
    CompletionReminders(
        SharedNotch& notch, const QuestionReminders& questions, Dependencies dependencies);

    CompletionOffer offer() const;
    bool actionReady() const { return actionReady_; }
    bool activationFailed() const { return activationFailed_; }
    const std::string& status() const { return status_; }
    bool hookInstalled() const { return hookInstalled_; }
    // The notch is this reminder's, open or closed.
    bool isOnShow() const;

    // Starts anew; nothing that came before counts.
    void startMonitoring();
    void stopMonitoring();
    // False: nobody can tell, and the status says why.
    bool refreshHookInstalled();
    // An application came to the front, hid or ended: the person has looked up.
    void environmentChanged();
    // Claims the notch for what waits, if it may.
    void refresh();
    // Takes the action away at once, and ends the wait for the notch to close by itself.
    void disarm();
    // The person closes the notch.
    void willCollapse();
    void pointerEntered() { collapseWork_.cancel(); }
    // While it is on show, and the pointer had been inside.
    void pointerLeft();
    // True: the host was brought to the front. Once a reminder at most.
    bool activate(UUID token);
    // The person has taken note; neither host nor hook hears of it.
    void dismiss(UUID token);

private:
    bool mayShow() const;
    std::optional<UUID> shownToken() const;
    bool isCurrent(UUID token) const;
    bool hostIsBehind(std::int32_t pid) const;
    void handleEvent(const CompletionEvent& event);
    void noteStatus(const CompletionEvent& event);
    void tick();
    void lookAtHost();
    void scheduleTick();
    // The reminder that was on show has gone, and perhaps another one came in its place.
    void closeUnlessShown(const std::optional<UUID>& before);
    void arm(UUID token);
    void finishArming(UUID token);
    void scheduleCollapse(Seconds delay);

    SharedNotch& notch_;
    const QuestionReminders& questions_;
    Dependencies dependencies_;
    CompletionReminderState state_;
    bool actionReady_ = false;
    bool activationFailed_ = false;
    std::string status_ = "本轮结束提醒尚未开启";
    bool hookInstalled_ = false;
    std::optional<UUID> armingToken_; // Arming for it is running or done.
    std::optional<UUID> actionConsumed_; // Its one activation has been used.
    UUID epoch_ = UUID::random();
    Date environmentChangedAt_ = Date::distantPast();
    bool ticking_ = false; // tickWork_ waits.
    DelayedWork tickWork_;
    DelayedWork armingWork_;
    DelayedWork collapseWork_;
};

} // namespace notch
