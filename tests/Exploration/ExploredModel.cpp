// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "ExploredModel.h"

#include <algorithm>
#include <cmath>

namespace notch {
namespace {

constexpr Seconds guard = NotchInteraction::handoffDelay;
constexpr Seconds rounding{1e-6};
constexpr Seconds never{1e9};
constexpr Seconds brief{0.5};
constexpr Seconds doubleClick{0.4};

bool startsWithAny(std::string_view text, std::initializer_list<std::string_view> words)
{
    return std::ranges::any_of(words, [&](auto word) { return text.starts_with(word); });
}

} // namespace

ExploredModel::ExploredModel(Seconds grain)
    : StartedModel(grain)
    , grain_(grain)
{
    model.setPreference(Preference::completionRemindersEnabled, true);
    model.setDisplay(&fakes.display);
    model.subscribe([this] { look(); });
    addWords();
    look();
}

void ExploredModel::addWords()
{
    const auto add = [this](const char* word, auto operation) { operations_[word] = operation; };
    const auto change = [this] { fakes.applicationEvents.changed(); };
    add("ask", [this] { ask(fakes.hookRequest(next()), never); });
    add("brief", [this] { ask(fakes.hookRequest(next()), brief); });
    add("card", [this] { ask(fakes.nativeRequest(next()), never); });
    add("press", [this] {
        model.notePress(*fakes.display.inputTime());
        press(Control::pointer);
        noteClick();
    });
    add("release", [this] { release(Control::pointer); });
    add("key", [this] { press(Control::keys); });
    add("keyUp", [this] { release(Control::keys); });
    add("click", [this] {
        model.notePress(*fakes.display.inputTime());
        noteClick();
    });
    add("plain", [this] { model.setShowAllParameters(false); });
    add("tell", [this] { show(fakes.display.shown); });
    add("soon", [this] { wait(*untilBound() - grain_); });
    add("until", [this] { wait(*untilBound()); });
    add("age", [this] {
        const auto lapses = turnEndedAt_ + CompletionReminderState::lifetime;
        wait(lapses - now() - grain_);
    });
    add("begin", [this] {
        fakes.tell(fakes.turnStart(next()));
        if (fakes.completionServer.onEvent && fakes.host.processes.size() == 1) {
            turn_ = Turn::open;
            turnChangedAt_ = now();
        }
    });
    add("end", [this] { end(fakes.turnEnd(next())); });
    add("lateEnd", [this, change] {
        auto event = fakes.turnEnd(next());
        event.observedAt = event.observedAt + -grain_;
        change();
        if (event.observedAt >= turnChangedAt_)
            end(event);
    });
    add("switchApps", change);
    add("lateScan", [this, change] {
        const auto begun = uptime() + -grain_;
        change();
        if (fakes.monitor.callbacks.onQuestion)
            fakes.monitor.callbacks.onQuestion(FakeDependencies::question(next()), begun);
        fakes.time.runPosted();
    });
    add("goAnswerLate", [this] { model.handoffQuestion({UUID()}); });
    add("openTurnLate", [this] { model.activateCompletion(UUID()); });
    add("notedLate", [this] { model.dismissCompletion(UUID()); });
    add("show", [this] { fakes.host.processes.front().isHidden = false; });
    add("alone", [this] { fakes.host.processes.resize(1); });
    add("quit", [this] {
        stopped_ = true;
        turn_ = Turn::none;
        model.stop();
    });
}

bool ExploredModel::isPossible(std::string_view words) const
{
    const auto& host = fakes.host.processes;
    const auto& shown = fakes.display.shown;
    const auto said = [&](std::initializer_list<std::string_view> any) {
        return startsWithAny(words, any);
    };
    if (stopped_ && said({"quit", "refuse"}))
        return false;
    if (said({"soon"}))
        return untilBound() > grain_ * 1.5;
    if (said({"until"}))
        return untilBound().has_value();
    if (said({"age"}))
        return turnEndedAt_ + CompletionReminderState::lifetime - now() > Seconds{6}
            && state().completionState.current.has_value();
    if (said({"refuse, release", "release"}))
        return presses_[0].has_value();
    if (said({"refuse, keyUp", "keyUp"}))
        return presses_[1].has_value();
    if (said({"press", "key "})) // Others' buttons take no press: see judgeLook().
        return state().actionReady
            && words.ends_with(state().isDemo ? "demo" : *interaction().currentID());
    const bool told = told_.value == shown; // A screen tells of each change before the next.
    if (said({"tell"}))
        return !told;
    if (said({"frame"}))
        return told
            && !(isSeen(shown) && shown->showsAllParameters == interaction().showAllParameters);
    if (said({"move", "blank", "quietly"}))
        return told && shown;
    if (said({"goAnswerLate"}))
        return state().questionActionReady;
    if (said({"openTurnLate", "notedLate"}))
        return state().completionState.current.has_value();
    if (said({"goAnswer", "deaf, goAnswer"}))
        return state().questionState.token().has_value();
    if (said({"openTurn", "deaf, openTurn", "noted"}))
        return state().completionState.current.has_value();
    if (said({"front"}))
        return !host[0].isActive;
    if (said({"back"}))
        return host[0].isActive;
    if (said({"hide"}))
        return !host[0].isHidden;
    if (said({"show"}))
        return host[0].isHidden;
    if (said({"second"}))
        return host.size() == 1;
    if (said({"alone"}))
        return host.size() == 2;
    if (said({"dismiss"}))
        return interaction().feedback().has_value();
    if (said({"endDemo"}))
        return state().isDemo;
    if (said({"details"}))
        return !interaction().showAllParameters && interaction().current();
    if (said({"plain"}))
        return interaction().showAllParameters;
    if (said({"enter"}))
        return !interaction().pointerInside();
    return true;
}

void ExploredModel::take(const std::string& words)
{
    before_ = {seen_, state().questionActionReady || state().completionActionReady, interaction()};
    released_.reset();
    fakes.calls.clear();
    const int looks = fakes.display.looks;
    play(words);
    fakes.server.hookWaits = fakes.monitor.cardVerifies = fakes.host.activates = true;
    if (startsWithAny(words, {"frame", "blank", "move", "tell"})
        || (startsWithAny(words, {"soon", "until", "age"}) && fakes.display.looks != looks))
        told_.be(fakes.display.shown, uptime());
    if (clicks_.size() > 1 && clicks_.back() != uptime())
        clicks_.erase(clicks_.begin());
    std::erase_if(clicks_, [this](Uptime at) { return uptime() - at >= doubleClick; });
    look();
    judge(words);
}

// After every operation, those of timers included.
void ExploredModel::look()
{
    const auto& shown = fakes.display.shown;
    seen_.be(isSeen(shown) ? shown : std::nullopt, uptime());
    const auto armed = state().actionReady ? interaction().currentID() : std::nullopt;
    if (armed != armed_.value)
        ++armedTimes_;
    armed_.be(armed, uptime());
}

bool ExploredModel::isSeen(const std::optional<ShownDecision>& shown) const
{
    auto present = decision();
    if (!present || !shown || !interaction().expanded())
        return false;
    present->buttons = shown->buttons;
    present->showsAllParameters = shown->showsAllParameters;
    return shown == present;
}

// What is done

void ExploredModel::ask(ApprovalRequest request, Seconds lifetime)
{
    request.expiresAt = now() + lifetime;
    const auto waits = [&] {
        return std::ranges::any_of(
            interaction().requests(), [&](const auto& each) { return each.id == request.id; });
    };
    if (!waits())
        decided_.erase(request.id);
    fakes.report(
        request.isNative() ? fakes.monitor.callbacks.onRequest : fakes.server.callbacks.onRequest,
        request);
}

void ExploredModel::press(Control control)
{
    const auto word = next();
    const auto id = word == "demo" ? *interaction().currentID() : word;
    const bool pointer = control == Control::pointer;
    const auto at = pointer ? fakes.display.inputTime() : std::nullopt;
    auto& kept = presses_[pointer ? 0 : 1];
    kept.reset();
    if (auto granted = model.press(id, at))
        kept = Press{std::move(*granted), armedTimes_, seen_.changes,
            uptime() - seen_.since >= guard - rounding};
}

void ExploredModel::release(Control control)
{
    released_ = std::exchange(presses_[control == Control::pointer ? 0 : 1], std::nullopt);
    model.release(released_->granted, Decision::allow);
}

// Only the last one can come too soon before a press, and at its own moment the one before it.
void ExploredModel::noteClick()
{
    std::erase_if(clicks_, [this](Uptime at) { return at == uptime(); });
    if (!clicks_.empty())
        clicks_.erase(clicks_.begin(), clicks_.end() - 1);
    clicks_.push_back(uptime());
}

void ExploredModel::wait(Seconds time)
{
    waited_ = time;
    fakes.time.advance(time);
}

void ExploredModel::end(const CompletionEvent& event)
{
    fakes.tell(event);
    if (turn_ != Turn::open || fakes.host.processes.size() != 1)
        return;
    turn_ = Turn::over;
    turnChangedAt_ = turnEndedAt_ = now();
}

// The moments at which a rule changes its mind.
std::optional<Seconds> ExploredModel::untilBound() const
{
    std::optional<Seconds> next;
    const auto consider = [&](Seconds left) {
        const auto grains = Seconds{std::ceil((left - rounding) / grain_)} * grain_.count();
        if (left > rounding && left < Seconds{6} && (!next || grains < *next))
            next = grains;
    };
    fakes.time.visitTimers([&](Seconds left, Seconds) { consider(std::max(left, rounding * 2)); });
    if (interaction().expanded() && !interaction().requests().empty())
        consider(interaction().readyAt() - now());
    for (const auto& request : interaction().requests())
        consider(request.expiresAt - now());
    for (const auto at : clicks_)
        consider(at + doubleClick - uptime());
    if (state().completionState.current)
        consider(turnEndedAt_ + CompletionReminderState::lifetime - now());
    return next;
}

// What is promised

void ExploredModel::promise(bool kept, const char* text)
{
    if (!kept && broken_.empty())
        broken_ = text;
}

void ExploredModel::judge(const std::string& words)
{
    for (const auto& call : fakes.calls) {
        if (call.find(".decide ") != std::string::npos)
            judgeDecision(words, call);
        if (call.starts_with("activate"))
            judgeActivation(words);
    }
    if (startsWithAny(words, {"scan", "page2", "lateScan", "unseen", "unreadable", "begin", "end A",
                                 "lateEnd", "goAnswer", "openTurn", "noted", "switchApps", "deaf"}))
        judgeReminding();
    judgeLook();
    judgeTimers();
}

void ExploredModel::judgeDecision(const std::string& words, const std::string& call)
{
    const auto at = call.find(".decide ") + 8;
    const auto id = call.substr(at, call.rfind(' ') - at);
    promise(released_.has_value(), "a decision leaves only at a release");
    if (!released_)
        return;
    promise(released_->granted.requestID == id, "a decision is for the request that was pressed");
    promise(released_->armedTime + 1 == armedTimes_,
        "press and release lie in one armed time, which ends with the decision");
    const auto& seen = before_.seen;
    promise(seen.value && seen.value->requestID == id
                && seen.value->showsAllParameters == before_.interaction.showAllParameters,
        "what is decided is on the screen, open, without a receipt over it");
    promise(released_->seenLong && seen.changes == released_->sight,
        "what is decided was to be seen for the whole guard delay before the press");
    const auto& waiting = before_.interaction.requests();
    const auto request =
        std::ranges::find_if(waiting, [&](const auto& each) { return each.id == id; });
    promise(request != waiting.end() && request->source != "demo",
        "only what waits is decided, and never a demonstration");
    promise(request == waiting.end() || request->expiresAt > now(),
        "nothing is decided when its time is over");
    promise(words.starts_with("refuse") || decided_.insert(id).second,
        "a request is decided once at most");
}

void ExploredModel::judgeActivation(const std::string& words)
{
    promise(startsWithAny(words, {"goAnswer", "openTurn", "deaf"}),
        "the host comes to the front only at a click");
    promise(words.find("Late") == std::string::npos, "a click on what has gone activates nothing");
    const auto& seen = before_.seen;
    promise(before_.reminderReady && seen.value && seen.value->reminder,
        "only an armed reminder that is on the screen activates");
    promise(uptime() - seen.since >= guard - rounding,
        "a reminder was to be seen for the whole guard delay before the click");
}

void ExploredModel::judgeReminding()
{
    const auto& was = before_.interaction;
    const auto& is = interaction();
    promise(was.requests() == is.requests() && was.selectedID() == is.selectedID()
                && was.feedback() == is.feedback()
                && (is.requests().empty() || was.readyAt() == is.readyAt()),
        "reminders leave requests and receipts alone");
}

void ExploredModel::judgeLook()
{
    std::set<std::string> ids;
    for (const auto& request : interaction().requests())
        promise(ids.insert(request.id).second, "a request is queued once");
    for (const auto& request : interaction().requests())
        promise(request.id == interaction().currentID() || !model.press(request.id),
            "only the request on show takes a press");
    const auto* current = interaction().current();
    const bool counts = current && model.press(current->id).has_value();
    promise(!counts || state().actionReady, "a button that does not look armed takes no press");
    if (!state().actionReady)
        return;
    promise(current && interaction().expanded() && !interaction().feedback(),
        "only a request that is open, without a receipt over it, looks armed");
    const bool lapsed = current && current->expiresAt <= now();
    const bool untold = told_.value != fakes.display.shown;
    promise(counts || lapsed || untold, "a button that looks armed takes a press");
    promise(
        untold
            || (seen_.value && seen_.value->showsAllParameters == interaction().showAllParameters
                && uptime() - seen_.since >= guard - rounding),
        "what looks armed was to be seen for the whole guard delay");
}

// By what they were to wait for, since a timer says no more.
void ExploredModel::judgeTimers()
{
    int guards = 0;
    int receipts = 0;
    const auto& notch = interaction();
    const auto& turn = state().completionState;
    fakes.time.visitTimers([&](Seconds, Seconds delay) {
        const auto is = [delay](double seconds) { return delay == Seconds{seconds}; };
        if (is(0.22))
            promise(notch.pointerInside() && !notch.expanded(), "only a hover waits to open");
        else if (is(0.7) || is(0.15))
            promise(notch.canAutoCollapse(), "only an idle notch waits to close");
        else if (is(1.1) || is(1.8))
            ++receipts;
        else if (is(4.0) || is(1.5))
            promise(turn.current && notch.requests().empty(),
                "only a turn's end that has the notch waits to close");
        else
            ++guards;
    });
    promise(receipts == (notch.feedback() ? 1 : 0), "every receipt ends, and nothing else waits");
    const bool arms = notch.expanded() || told_.value;
    // The tick that nothing waits for any more is the last.
    const bool reminds = notch.expanded() && reminder();
    promise(guards <= (arms ? 1 : 0) + (reminds ? 1 : 0) + (turn_ != Turn::none ? 1 : 0),
        "only what is open or still on the screen is being armed, one thing at a time");
}

void ExploredModel::lookForDeadEnds()
{
    std::vector<std::string> waiting;
    for (const auto& request : interaction().requests())
        if (request.expiresAt > now() + Seconds{10})
            waiting.push_back(request.id);
    for (const auto& id : waiting) {
        play("dismiss, open, select " + id + ", plain");
        show(decision());
        fakes.time.advance(guard + Seconds{0.02} + grain_ * 2);
        promise(state().actionReady && model.press(id),
            "a person comes to an armed button for each request");
    }
}

void ExploredModel::openForHostBehind()
{
    auto& host = fakes.host.processes;
    host.resize(1);
    host.front().isActive = host.front().isHidden = false;
    play("open");
}

// The state as a text

std::string ExploredModel::grains(Seconds time) const
{
    return std::to_string(std::lround(time / grain_));
}

std::string ExploredModel::grainsLeft(Seconds time, Seconds longest) const
{
    if (time <= rounding)
        return "0";
    return time > longest ? "*"
                          : std::to_string(std::lround(std::ceil((time - rounding) / grain_)));
}

std::string ExploredModel::key() const
{
    return requestsKey() + questionKey() + turnKey() + timersKey();
}

// Hooks are alike: they are renamed in the order in which they appear.
std::string ExploredModel::requestsKey() const
{
    std::string key;
    std::string names;
    const auto& notch = interaction();
    const auto name = [&](const std::string& id) {
        const char letter = id.size() == 1 ? id.front() : id == notch.currentID() ? 'X' : 'Y';
        auto at = names.find(letter);
        if (at == std::string::npos) {
            at = names.size();
            names += letter;
        }
        return letter == 'C' || id.size() > 1 ? letter : static_cast<char>('a' + at);
    };
    for (const auto& request : notch.requests()) {
        key += request.id == notch.currentID() ? '[' : ' ';
        key += name(request.id);
        key += grainsLeft(request.expiresAt - now());
    }
    const auto flag = [&](bool on, char letter) { key += on ? letter : '-'; };
    flag(notch.selectedID() == notch.currentID(), 's');
    flag(notch.expanded(), 'o');
    flag(notch.pointerInside(), 'i');
    flag(notch.hoverBlockedUntilExit(), 'b');
    flag(notch.showAllParameters, 'd');
    flag(notch.feedback().has_value(), 'r');
    flag(state().isDemo, 't');
    flag(state().actionReady, 'a');
    flag(stopped_, 'q');
    if ((notch.expanded() || told_.value) && !notch.requests().empty())
        key += grainsLeft(notch.readyAt() - now());

    const auto& shown = fakes.display.shown;
    const auto describe = [&](const std::optional<ShownDecision>& what) {
        if (what && what->reminder)
            key += what->reminder == reminder() ? 'R' : 'r';
        else
            key += what ? name(what->requestID) : '0';
        flag(what && what->showsAllParameters, 'd');
    };
    key += '|';
    describe(shown);
    if (told_.value != shown) {
        key += '?';
        describe(told_.value);
    }
    if (told_.value)
        key += grainsLeft(guard - (uptime() - told_.since)) + ' ';
    flag(reminder() && model.mayPress(*reminder()), 'm');
    flag(state().completionSeen, 'c');
    if (seen_.value)
        key += grainsLeft(guard - (uptime() - seen_.since));
    if (armed_.value && armed_.since == uptime())
        key += '!';
    for (const auto& press : presses_) {
        key += !press ? '0' : press->armedTime == armedTimes_ ? 'p' : 'x';
        if (press && press->armedTime == armedTimes_)
            key += press->seenLong && seen_.changes == press->sight ? 's' : '-';
    }
    for (const auto at : clicks_)
        key += ' ' + grains(uptime() - at);
    return key;
}

// A value is told by what it does.
std::string ExploredModel::questionKey() const
{
    const auto& question = state().questionState;
    if (question == QuestionReminderState())
        return "|";
    std::string key = "|Q";
    const auto look = [&](const QuestionReminderState& is) {
        key += is.visible() ? (is.visible()->currentPage == 2 ? '2' : '1') : '0';
        key += is.token() == question.token() ? 's' : '-';
        key += is.hasBeenPresented() ? 'p' : '-';
        key += std::to_string(static_cast<int>(is.handoffStatus()));
    };
    const auto lookAfter = [&](const QuestionReminderState::Observation& seen) {
        auto copy = question;
        copy.observe(seen);
        look(copy);
    };
    look(question);
    lookAfter(FakeDependencies::question("Q"));
    lookAfter(FakeDependencies::question("Q", 2));
    lookAfter(QuestionReminderState::Absent{});
    key += state().questionActionReady ? 'a' : '-';
    return key;
}

std::string ExploredModel::turnKey() const
{
    const auto& host = fakes.host.processes;
    std::string key = "|";
    key += host[0].isActive ? 'f' : '-';
    key += host[0].isHidden ? 'h' : '-';
    key += std::to_string(host.size());
    key += std::to_string(static_cast<int>(turn_));
    if (turn_ != Turn::none)
        key += turnChangedAt_ == now() ? 'n' : '-';
    const auto& turn = state().completionState;
    if (turn.queuedCount > 0) {
        key += turn.current ? 'T' : 't';
        key += turn.hasBeenPresented ? 'p' : '-';
        key += state().completionActionReady ? 'a' : '-';
        key += turn.current && state().completionActivationFailed ? 'f' : '-';
        key += turn.current
                 ? grainsLeft(turnEndedAt_ + CompletionReminderState::lifetime - now(), Seconds{6})
                 : grainsLeft(turnEndedAt_ + CompletionReminderState::settlingTime - now());
    }
    return key;
}

bool ExploredModel::isTick(Seconds delay) const
{
    const double settling = (delay - Seconds{0.801}) / grain_;
    return delay == Seconds{0.2} || std::abs(settling - std::round(settling)) < 1e-3;
}

std::string ExploredModel::timersKey() const
{
    std::string key = "|";
    fakes.time.visitTimers([&](Seconds left, Seconds delay) {
        key += grains(left) + ':';
        if (delay == Seconds{0.22} || delay == Seconds{0.15} || delay >= Seconds{0.6})
            key += std::to_string(delay.count()).substr(0, 3);
        else if (isTick(delay))
            key += 't';
        else if (delay == guard)
            key += 'g';
        key += ' ';
    });
    return key;
}

} // namespace notch
