// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/StartedModel.h"

namespace notch {
namespace {

TEST_F(AppModelTest, opensOnlyForAPointerThatStays)
{
    model.setPointerInside(true);
    pass(0.21);
    model.setPointerInside(false);
    pass(1);
    EXPECT_FALSE(state().isExpanded()) << "it only crossed";
    outside.preferences.set(Preference::hoverToExpand, false);
    model.setPointerInside(true);
    pass(1);
    EXPECT_FALSE(state().isExpanded()) << "switched off";
}

TEST_F(AppModelTest, staysClosedUnderThePointerThatClosedIt)
{
    model.setPointerInside(true);
    pass(1);
    model.collapse();
    model.setPointerInside(true);
    pass(1);
    EXPECT_FALSE(state().isExpanded());
    model.setPointerInside(false);
    model.setPointerInside(true);
    pass(1);
    EXPECT_TRUE(state().isExpanded());
}

TEST_F(AppModelTest, closesByItselfOnlyWhenNothingNeedsItAtTheEndOfTheDelay)
{
    struct Row {
        const char* meanwhile;
        bool closes;
        std::function<void(StartedModel&)> act;
    };
    const Row rows[] = {
        {"nothing", true, [](auto&) {}},
        {"the pointer comes back", false, [](auto& it) { it.model.setPointerInside(true); }},
        {"a request comes", false, [](auto& it) { it.outside.request("A"); }},
        {"a question comes", false, [](auto& it) { it.outside.reminders.question = true; }},
        {"a turn ends", false, [](auto& it) { it.outside.reminders.completion = true; }},
        {"opened on purpose", false, [](auto& it) { it.model.expand(); }},
        {"switched off", false,
            [](auto& it) { it.outside.preferences.set(Preference::autoCollapse, false); }},
    };
    for (const auto& row : rows) {
        StartedModel started;
        started.model.expand();
        started.model.setPointerInside(true);
        started.model.setPointerInside(false);
        started.pass(0.6);
        row.act(started);
        started.pass(1);
        EXPECT_EQ(started.state().isExpanded(), !row.closes) << row.meanwhile;
    }
}

TEST_F(AppModelTest, neverClosesByItselfWithThatSwitchedOff)
{
    outside.preferences.set(Preference::autoCollapse, false);
    armedRequest("A");
    decide(Decision::deny);
    model.setPointerInside(true);
    model.setPointerInside(false);
    pass(9);
    model.setPointerInside(false);
    pass(9);
    EXPECT_TRUE(state().isExpanded());
}

TEST_F(AppModelTest, closesForAnOutsideClickOnlyWhenNothingNeedsIt)
{
    struct Row {
        const char* name;
        bool closes;
        std::function<void(StartedModel&)> arrange;
    };
    const Row rows[] = {
        {"idle", true, [](auto&) {}},
        {"pointer inside", false, [](auto& it) { it.model.setPointerInside(true); }},
        {"request", false, [](auto& it) { it.outside.request("A"); }},
        {"receipt", false, [](auto& it) { it.outside.request("A"), it.outside.remove("A"); }},
        {"question", false, [](auto& it) { it.outside.reminders.question = true; }},
        {"turn end", true, [](auto& it) { it.outside.reminders.completion = true; }},
        {"switched off", false,
            [](auto& it) { it.outside.preferences.set(Preference::autoCollapse, false); }},
    };
    for (const auto& row : rows) {
        StartedModel started;
        started.model.expand();
        row.arrange(started);
        started.model.handleOutsideInteraction();
        EXPECT_EQ(started.state().isExpanded(), !row.closes) << row.name;
        EXPECT_FALSE(started.interaction().hoverBlockedUntilExit()) << row.name;
    }
}

// Who owns the notch: a request, a receipt, a question, a turn end, in this order.
TEST_F(AppModelTest, letsRemindersHaveTheNotchInTheirTurn)
{
    enum class Approval { none, waiting, receipt };
    struct Row {
        Approval approval;
        bool question;
        bool completion;
        Calls onLeave; // What the reminders hear when the pointer leaves …
        bool closesItself; // … and whether the notch goes on to close by itself.
        Calls onCollapse;
    };
    const Calls disarmed{"reminders.disarm"};
    const Calls seen{"reminders.willCollapse", "reminders.disarm"};
    const Calls left{"reminders.pointerLeft"};
    for (const auto& row : {
             Row{Approval::waiting, true, true, {}, false, disarmed},
             Row{Approval::waiting, false, true, {}, false, disarmed},
             Row{Approval::receipt, true, true, {}, false, disarmed},
             Row{Approval::receipt, false, true, {}, false, disarmed},
             Row{Approval::none, true, true, {}, false, seen},
             Row{Approval::none, true, false, {}, false, seen},
             Row{Approval::none, false, true, left, false, seen},
             Row{Approval::none, false, false, {}, true, disarmed},
         }) {
        SCOPED_TRACE(
            testing::PrintToString(std::tuple(row.approval, row.question, row.completion)));
        StartedModel started;
        started.outside.reminders.question = row.question;
        started.outside.reminders.completion = row.completion;
        started.model.expand();
        if (row.approval != Approval::none)
            started.outside.request("A");
        if (row.approval == Approval::receipt)
            started.outside.remove("A");
        started.model.setPointerInside(true);
        started.outside.calls.clear();
        started.model.setPointerInside(false);
        EXPECT_EQ(started.outside.takeCalls(), row.onLeave);
        started.model.setPointerInside(false);
        EXPECT_EQ(started.outside.takeCalls(), Calls{}) << "the pointer was not inside";
        started.pass(1);
        EXPECT_EQ(started.state().isExpanded(), !row.closesItself);
        started.outside.calls.clear();
        started.model.collapse();
        EXPECT_EQ(started.outside.takeCalls(), row.onCollapse);
        EXPECT_EQ(started.state().questionVisible, row.question);
        EXPECT_EQ(started.state().completionVisible, row.completion);
    }
}

TEST_F(AppModelTest, tellsRemindersWhenTheNotchIsTakenAndWhenItIsFree)
{
    outside.request("A");
    EXPECT_EQ(outside.takeCalls(), Calls{"reminders.disarm"});
    outside.request("A");
    EXPECT_EQ(outside.takeCalls(), Calls{}) << "refused";
    pass(1);
    decide(Decision::deny);
    EXPECT_EQ(outside.takeCalls("reminders"), Calls{"reminders.disarm"});
    model.dismissFeedback();
    EXPECT_EQ(outside.takeCalls(), Calls{"reminders.refresh"});
    outside.remove("A");
    model.expand();
    EXPECT_EQ(outside.takeCalls(), (Calls{"reminders.refresh", "reminders.refresh"}));
    model.showDemo(Demo::hook);
    EXPECT_EQ(outside.takeCalls(), Calls{"reminders.disarm"});
    model.setPointerInside(true);
    EXPECT_EQ(outside.takeCalls(), Calls{"reminders.pointerEntered"});
}

TEST_F(AppModelTest, opensTheEditionThatAskedOrTheOtherOne)
{
    using enum Workspace::HostApplication;
    struct Row {
        std::optional<std::string> source;
        std::set<Workspace::HostApplication> installed;
        Calls calls;
    };
    for (const auto& row : {
             Row{{}, {quillmoss, quillmossAI}, {"open quillmoss"}},
             Row{"quillmoss", {quillmoss, quillmossAI}, {"open quillmoss"}},
             Row{"demo", {quillmoss, quillmossAI}, {"open quillmoss"}},
             Row{"quillmossAI", {quillmoss, quillmossAI}, {"open quillmossAI"}},
             Row{"quillmossAI", {quillmoss}, {"open quillmoss"}},
             Row{"quillmoss", {quillmossAI}, {"open quillmossAI"}},
             Row{"quillmoss", {}, {}},
         }) {
        outside.workspace.installed = row.installed;
        model.openHost(row.source);
        EXPECT_EQ(outside.takeCalls("open"), row.calls) << row.source.value_or("none");
    }
    EXPECT_EQ(state().message, "未在 Applications 找到 QuillMoss，请手动打开");
    EXPECT_TRUE(state().isExpanded());
    outside.workspace.installed = {quillmoss, quillmossAI};
    auto request = outside.hookRequest("A");
    request.source = "quillmossAI";
    outside.server.callbacks.onRequest(request);
    pass(0);
    model.openHost({});
    EXPECT_EQ(outside.takeCalls("open"), Calls{"open quillmossAI"}) << "the current request's";
    model.collapse();
    outside.workspace.openFailed();
    EXPECT_EQ(state().message, "无法打开 QuillMoss，请手动打开");
    EXPECT_TRUE(state().isExpanded());
}

TEST_F(AppModelTest, copiesWhatIsOnShowAndMarksIt)
{
    outside.request("A");
    outside.request("B");
    model.copyRequest(*interaction().current());
    EXPECT_EQ(outside.pasteboard.text, "ls");
    EXPECT_EQ(state().copiedRequestID, "A");
    model.setShowAllParameters(true);
    model.copyRequest(*interaction().current());
    EXPECT_EQ(outside.pasteboard.text, R"({"command":"ls"})");
    model.select("B");
    EXPECT_FALSE(state().copiedRequestID);
    EXPECT_FALSE(interaction().showAllParameters);
    pass(1);
    model.copyRequest(*interaction().current());
    pass(0.6);
    EXPECT_EQ(state().copiedRequestID, "B") << "the older copy's end is not this one's";
}

} // namespace
} // namespace notch
