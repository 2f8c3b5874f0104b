// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Bridge/Decision.h"
#include "Foundation/UUID.h"
#include "Native/Monitor/Candidate.h"
#include "Native/Monitor/MonitorDependencies.h"
#include "Native/Monitor/NativeMonitorLifecycle.h"
#include "Native/Monitor/QuestionSighting.h"
#include "Native/Monitor/Snapshot.h"
#include "Native/NativeApprovals.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace notch {

// The monitor without its thread: what it has offered, what it must not offer again, and the press.
// Nothing stale can act: a callback may stop or start it, and a read may take its time, so after
// each of them the epoch is compared, and work of an older one ends there.
//
//   none        a pass confirms a card           offered      onRequest
//   offered     a pass does not confirm it       none         onRemoval
//   offered     decide                           suppressed   onRemoval, then perhaps one press
//   suppressed  a complete pass sees no button   none
class NativeMonitor {
public:
    // `timer`: on, tick() is to run at once and then at regular times; off, no more.
    NativeMonitor(MonitorDependencies dependencies, std::function<void(bool on)> timer);

    // May be called again while running, to change what is watched.
    void start(NativeApprovals::Callbacks callbacks, NativeApprovals::Watched watched);
    void stop();
    void tick();
    bool decide(const std::string& id, Decision decision);

    // The last pass had nothing to look at until the desktop changes.
    bool mayRest() const { return mayRest_; }

private:
    using Observation = QuestionReminderState::Observation;

    void removeActive();
    void setStatus(std::string_view text);
    // As it is now: the background test comes first.
    void report(Observation observation, Uptime capturedAt);
    // True: the pass's card is the one on offer now, or was about to be when things changed.
    bool offer(const Snapshot& pass, const UUID& epoch);
    bool isOffered(const Candidate& card) const;
    void present(const Candidate& card, const UUID& epoch);
    bool mayPresent(const Candidate& card, const UUID& epoch) const;
    bool press(const Candidate& card, Decision decision, const UUID& epoch);
    bool refuse(std::string_view why);

    MonitorDependencies dependencies_;
    std::function<void(bool on)> timer_;
    NativeMonitorLifecycle lifecycle_;
    NativeApprovals::Callbacks callbacks_;
    bool approvalsEnabled_ = true;
    bool mayRest_ = false;
    std::optional<Candidate> active_; // On offer.
    std::set<std::string> suppressed_; // Fingerprints of cards decided on.
    std::optional<std::string> lastStatus_;
    QuestionSighting questions_;
};

} // namespace notch
