// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/CompletionReminders.h"
#include "AppModel/DecisionGuard.h"
#include "AppModel/DemoRequest.h"
#include "AppModel/QuestionReminders.h"
#include "AppModel/ReminderCallbacks.h"
#include "AppModel/SharedNotch.h"
#include "Bridge/ApprovalBridge.h"
#include "Foundation/MainQueue.h"
#include "Foundation/Time.h"
#include "Foundation/UUID.h"
#include "Geometry/PanelGeometry.h"
#include "Interaction/NotchInteraction.h"
#include "Native/NativeApprovals.h"
#include "Services/ApplicationEvents.h"
#include "Services/Pasteboard.h"
#include "Services/Preferences.h"
#include "Services/Workspace.h"
#include "TurnEnd/CompletionChannel.h"

#include <cassert>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace notch {

// What the views read. A plain value; the model publishes it as a whole.
struct AppModelState {
    NotchInteraction interaction;
    bool serviceReady = false; // Hooks can reach the approval server.
    std::string message = "正在启动本地审批桥接…"; // The line of status text.
    // The last failure that the line told of, for the notch; until the person has decided above it.
    std::optional<std::string> failure;
    bool isDemo = false; // The current request is a demonstration.
    bool actionReady = false; // The decision buttons are armed.
    double notchHeight = 32; // Points; these three are written by the layout pass.
    double panelWidth = maximumPanelWidth;
    double compactWidth = 240;
    // What the panel shows while an animation runs; absent: it follows interaction.expanded().
    std::optional<bool> expansionPresentation;
    std::optional<std::string> copiedRequestID; // Its text was copied a moment ago.
    std::vector<std::string> configuredProfiles; // Editions with our hook, by display name.
    std::optional<Date> lastHookAt; // When the last hook request was accepted.
    Switches switches; // The person's, as stored; the defaults until the model has started.
    bool nativeAccessGranted = false;
    std::string nativeStatus = "原生安全确认尚未开启";
    // Reminders, whether or not the notch is theirs: requests and receipts go first.
    QuestionReminderState questionState;
    bool questionActionReady = false; // Its button is armed.
    CompletionOffer completionState;
    bool completionActionReady = false;
    bool completionActivationFailed = false; // The host did not come to the front.
    bool completionSeen = false; // It has been on show for the guard delay.
    std::string completionStatus; // How the turn-end channel does.
    bool completionHookInstalled = false;

    // The panel and the views ask this, never the raw field.
    bool isExpanded() const { return expansionPresentation.value_or(interaction.expanded()); }

    bool operator==(const AppModelState&) const = default;
};

// The one observable model of the resident application. Lives on the main thread; owns every timer
// of the interaction. It never decides: a decision leaves only through decide(), which tests anew
// at that moment whether it may.
class AppModel final : private SharedNotch {
public:
    // Everything outside the model. Borrowed; must outlive it.
    struct Dependencies {
        const Clock& clock;
        MainQueue& mainQueue;
        ApprovalBridge& server;
        NativeApprovals& nativeMonitor;
        CompletionChannel& completionServer;
        ApplicationEvents& applicationEvents;
        Preferences& preferences;
        Pasteboard& pasteboard;
        Workspace& workspace;
        // Display names of the editions whose settings hold this executable's approval hook;
        // nothing when the executable's own path is unknown.
        std::function<std::optional<std::vector<std::string>>()> configuredProfiles;
        CompletionReminders::HookCheck completionHookInstalled;
        ReminderCallbacks reminders;
    };

    // A press on a decision button, as it stood when the pointer, finger or key went down. A
    // release counts only while the same request is still armed by the same arming.
    struct ArmedPress {
        std::string requestID;
        UUID arming;
    };

    explicit AppModel(Dependencies dependencies);
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    const AppModelState& state() const { return state_; }
    // `changed` runs on the main thread after each operation that changed the state, never within
    // one. There is one subscriber; a new one replaces it.
    void subscribe(std::function<void()> changed);

    // Set by the delegate at launch.
    std::function<void()> showSettings;
    std::function<void()> onQuitRequested;

    // Launch: observers, editions, native monitoring, turn ends, and last the approval server.
    void start();
    // Termination: turn ends, server, native monitor, in this order. Nothing is answered by it.
    void stop();

    // From now on the buttons are armed only for what this shows; null when it is gone. Borrowed.
    void setDisplay(const DecisionDisplay* display);
    // A frame is on the screen, or what was on it has gone, moved or been covered.
    void displayChanged();
    // The person pressed somewhere on the desktop.
    void notePress(InputTime press) { guard_.notePress(press); }

    // Nothing unless the buttons are armed for this request now, and were when the person acted.
    std::optional<ArmedPress> press(
        const std::string& requestID, const std::optional<InputTime>& at = {}) const;
    // The same for a reminder's buttons. The release goes to an operation below.
    bool mayPress(UUID reminder, const std::optional<InputTime>& at = {}) const;
    // Decides if the press still holds; otherwise nothing happens.
    void release(const ArmedPress& press, Decision decision);
    // The one path by which a decision leaves.
    void decide(const ApprovalRequest& request, Decision decision);

    void select(const std::string& id);
    // +1 the next, -1 the previous, with wrap-round.
    void selectAdjacent(int offset);
    void setShowAllParameters(bool on);
    void expand();
    void collapse() override;
    void setPointerInside(bool inside);
    // A click somewhere else on the screen.
    void handleOutsideInteraction();
    void copyRequest(const ApprovalRequest& request);
    void showDemo(Demo demo);
    // Ends a demonstration that waits; nothing was decided by it.
    void endDemo();
    // Leaves a receipt before its time is over.
    void dismissFeedback();
    // The edition's application first; with no source that of the current request, if any.
    void openHost(const std::optional<std::string>& source);
    enum class NativeAccess { ask, enableAndAsk };
    void requestNativeAccess(NativeAccess access);
    // Stores the switch, publishes it, and starts or ends what it is for.
    void setPreference(Preference preference, bool on);
    void refreshNativeMonitoring();
    void refreshConfiguredProfiles();

    // Reminders. The tokens are those of what is on show; true: the host was brought to the front.
    // Nothing happens while the display does not show them, or has not for the guard delay.
    bool handoffQuestion(const QuestionReminderState::PresentationToken& token);
    bool activateCompletion(UUID token);
    void dismissCompletion(UUID token);
    void startCompletionMonitoring();
    void stopCompletionMonitoring();
    void refreshCompletionHookInstalled();

    // For the layout pass.
    void setNotchHeight(double points);
    void setWidths(double panelWidth, double compactWidth);
    void setExpansionPresentation(std::optional<bool> expanded);

private:
    // Stands for one operation; operations nest. The subscriber hears when the outermost ends.
    class Change {
    public:
        explicit Change(AppModel& model)
            : model_(model)
        {
            assert(std::this_thread::get_id() == model_.thread_);
            ++model_.openChanges_;
        }
        ~Change()
        {
            if (--model_.openChanges_ == 0)
                model_.publish();
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

    private:
        AppModel& model_;
    };

    void handleRequest(const ApprovalRequest& request);
    void handleRemoval(const std::string& id);
    void handleNativeStatus(const std::string& text);
    void handleUnreachable();
    void startServer();
    void publish();
    void fail(std::string message);

    Date now() const { return dependencies_.clock.now(); }
    bool isOn(Preference preference) const { return state_.switches.isOn(preference); }
    void store(Preference preference, bool on);
    bool isArmed(const std::string& requestID) const;
    bool mayAutoCollapse() const;

    // The notch as the reminders see it.
    bool isFree() const override;
    bool isOpen() const override { return state_.interaction.expanded(); }
    bool pointerIsInside() const override { return state_.interaction.pointerInside(); }
    void keepAsItIs() override;
    void open() override;
    void withdraw() override;
    void refreshReminders() override;
    DelayedWork after(Seconds delay, MainQueue::Work work) override;
    Poster poster() override;
    void disarmReminders();
    void applicationsChanged();
    void publishReminders();

    bool deliver(const ApprovalRequest& request, Decision decision);
    void finish(const std::string& id, NotchInteraction::Feedback::Kind kind);
    void disarm();
    void armReadiness();
    void arm();
    void scheduleFeedbackDismissal();
    void endFeedback();
    void scheduleHover();
    void scheduleAutoCollapse(Seconds delay);
    void hostNotOpened(const std::string& text);

    // `handle` as a callback for any thread: it runs on the main thread, later, and not at all
    // once the model is gone.
    template <class... Arguments> auto onMain(void (AppModel::*handle)(Arguments...))
    {
        return [weak = std::weak_ptr(self_), &queue = dependencies_.mainQueue, handle](
                   std::decay_t<Arguments>... arguments) {
            queue.post([weak, handle, ... held = arguments] {
                if (const auto self = weak.lock())
                    ((*self)->*handle)(held...);
            });
        };
    }

    const std::thread::id thread_ = std::this_thread::get_id(); // The main thread.
    Dependencies dependencies_;
    AppModelState state_;
    AppModelState published_; // As the subscriber last saw it.
    std::function<void()> changed_;
    int openChanges_ = 0;
    UUID readinessGeneration_ = UUID::random(); // Names one arming; see ArmedPress.
    DecisionGuard guard_;
    std::shared_ptr<AppModel*> self_ = std::make_shared<AppModel*>(this);

    // Each runs only while its handle stands; a later one replaces it.
    DelayedWork readinessWork_;
    DelayedWork hoverWork_;
    DelayedWork collapseWork_;
    DelayedWork feedbackWork_;
    DelayedWork copiedWork_;

    QuestionReminders questions_;
    CompletionReminders completions_;
};

} // namespace notch
