// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Monitor/Snapshot.h"

#include "Native/Approval/NativeApprovalClassifier.h"
#include "Native/Scan/AccessibilityScan.h"

#include <utility>

namespace notch {
namespace {

bool isWaiting(const QuestionReminderState::Observation& observation)
{
    return std::holds_alternative<QuestionReminder>(observation);
}

bool mayBeRead(const std::optional<HostApplication>& host)
{
    return host && !host->isActive && !host->isHidden;
}

// The match's nodes as live elements; nothing if one of them is not of this read.
std::optional<Candidate> resolve(const NativeApprovalMatch& match, const AXRead& read)
{
    const auto window = read.element(match.windowID);
    const auto container = read.element(match.containerID);
    const auto allow = read.element(match.allowID);
    const auto deny = read.element(match.denyID);
    if (!window || !container || !allow || !deny)
        return std::nullopt;
    Candidate card;
    card.pid = read.pid;
    card.window = *window;
    card.container = *container;
    card.allow = *allow;
    card.deny = *deny;
    card.layout = match.layout;
    card.context = match.context;
    for (const auto& id : match.contextNodeIDs)
        if (const auto element = read.element(id))
            card.contextElements.push_back(*element);
    return card;
}

} // namespace

void Snapshot::fail(std::string_view why)
{
    complete = false;
    status = why;
}

Snapshot Snapshot::take(const MonitorDependencies& dependencies, const Wanted& wanted)
{
    Snapshot pass;
    pass.startedAt = dependencies.clock.uptime();
    HostApplication host;
    if (!pass.choose(dependencies, host))
        return pass;
    AXRead read(host.pid, dependencies.clock.uptime());
    const auto roots = AccessibilityScan(dependencies.accessibility, dependencies.clock, read)
                           .readRoots(wanted.questions != nullptr);
    pass.complete = read.coverage().approvalComplete();
    if (wanted.questions)
        pass.question = wanted.questions->derive(read, roots);
    if (!mayBeRead(dependencies.livingHost(host.pid)))
        pass.question = QuestionReminderState::Unavailable{};
    pass.judge(dependencies, wanted, read, roots);
    return pass;
}

bool Snapshot::choose(const MonitorDependencies& dependencies, HostApplication& host)
{
    const auto hosts = dependencies.livingHosts();
    if (hosts.empty()) {
        status = monitorText::notRunning; // Complete: there is no card.
        mayRest = true;
        return false;
    }
    host = hosts.front();
    isForeground = mayRest = hosts.size() == 1 && host.isActive;
    if (hosts.size() > 1)
        fail(monitorText::severalInstances);
    else if (host.isActive)
        fail(monitorText::inFront);
    else if (host.isHidden)
        fail(monitorText::hidden);
    return complete;
}

void Snapshot::judge(const MonitorDependencies& dependencies, const Wanted& wanted,
    const AXRead& read, std::span<const NativeApprovalNode> roots)
{
    if (!wanted.approvals) {
        status = isWaiting(question) ? monitorText::questionOnly : monitorText::waitingForQuestion;
        return;
    }
    if (!complete) {
        status = isWaiting(question) ? monitorText::questionInFallback : monitorText::incomplete;
        return;
    }
    recognizable = NativeApprovalClassifier::hasRecognizableButtons(roots);
    findCard(dependencies, read, roots);
    if (!candidate || dependencies.backgroundTarget(read.pid))
        return;
    candidate.reset();
    question = QuestionReminderState::Unavailable{};
    const auto host = dependencies.livingHost(read.pid);
    isForeground = host && host->isActive;
    fail(monitorText::stateChanged);
}

void Snapshot::findCard(const MonitorDependencies& dependencies, const AXRead& read,
    std::span<const NativeApprovalNode> roots)
{
    const auto match = NativeApprovalClassifier::uniqueMatch(roots);
    auto card = match ? resolve(*match, read) : std::nullopt;
    if (!card) {
        const auto host = dependencies.livingHost(read.pid);
        if (recognizable)
            status = monitorText::refusedCard;
        else if (host && host->isActive)
            status = monitorText::inFront;
        return;
    }
    if (card->contextElements.empty()
        || card->contextElements.size() < match->contextNodeIDs.size()) {
        fail(monitorText::contextChanged);
        return;
    }
    describeCard(
        *card, read.windowTitle(match->windowID), dependencies.clock.now(), dependencies.sha256);
    candidate = std::move(card);
}

} // namespace notch
