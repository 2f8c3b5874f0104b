// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/QuitFlow.h"

#include "support/FakeOutside.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

// Writes down what the flow did, and keeps the question for the test to answer.
class FakeQuitStage final : public QuitStage {
public:
    bool panelIsOnScreen() const override { return panelShows; }
    void orderPanelFront() override { trace += "front;"; }
    void orderPanelOut() override { trace += "out;"; }
    void ask(const QuitQuestion& question, std::function<void(Answer)> given) override
    {
        trace += "ask;";
        asked = question;
        answered = std::move(given);
    }
    void terminate() override { trace += "terminate;"; }

    bool panelShows = true;
    std::string trace;
    QuitQuestion asked;
    std::function<void(Answer)> answered;
};

using Answer = QuitStage::Answer;

class QuitFlowTest : public testing::Test {
protected:
    QuitFlowTest() { model_.start(); }

    void requests(int count)
    {
        for (int i = 0; i < count; ++i)
            outside_.request(UUID::random().text());
        model_.collapse();
    }
    bool notchIsOpen() const { return model_.state().interaction.expanded(); }
    // Everything that a hook could have been told.
    std::vector<std::string> decisions() { return outside_.takeCalls("server.decide"); }

    FakeOutside outside_;
    AppModel model_{outside_.seams()};
    FakeQuitStage stage_;
    QuitFlow flow_{model_, stage_};
};

TEST_F(QuitFlowTest, withNothingWaitingEveryWayEndsAtOnce)
{
    flow_.quit();
    flow_.signalled(Uptime{1});
    EXPECT_EQ(stage_.trace, "terminate;terminate;");
    EXPECT_TRUE(flow_.shouldTerminate());
    EXPECT_FALSE(notchIsOpen());
}

TEST_F(QuitFlowTest, aDemonstrationKeepsNobodyFromQuitting)
{
    model_.showDemo(Demo::hook);
    EXPECT_TRUE(flow_.shouldTerminate());
    flow_.quit();
    EXPECT_EQ(stage_.trace, "terminate;");
}

TEST_F(QuitFlowTest, aTerminationFromOutsideIsRefusedAndShowsWhatWaits)
{
    requests(1);
    EXPECT_FALSE(flow_.shouldTerminate());
    EXPECT_TRUE(notchIsOpen());
    EXPECT_EQ(stage_.trace, "");
}

TEST_F(QuitFlowTest, theQuestionSaysWhatWaitsAndStandsAloneOnTheScreen)
{
    requests(2);
    flow_.quit();
    EXPECT_EQ(stage_.trace, "out;ask;");
    const QuitQuestion expected{
        .message = "还有 2 条请求待确认",
        .informativeText = "退出会把它们交回 QuillMoss 原流程，不会自动允许。",
        .stay = "继续查看",
        .leave = "交回 QuillMoss 并退出",
    };
    EXPECT_EQ(stage_.asked, expected);
}

TEST_F(QuitFlowTest, aSecondWishToQuitDuringTheQuestionDoesNothing)
{
    requests(1);
    flow_.quit();
    flow_.quit();
    EXPECT_EQ(stage_.trace, "out;ask;");
    EXPECT_FALSE(flow_.shouldTerminate()) << "nothing is confirmed yet";
}

TEST_F(QuitFlowTest, leavingEndsAndAnswersNoHook)
{
    requests(2);
    flow_.quit();
    stage_.answered(Answer::leave);
    EXPECT_EQ(stage_.trace, "out;ask;terminate;");
    EXPECT_TRUE(flow_.shouldTerminate()) << "the person has confirmed";
    EXPECT_EQ(decisions(), std::vector<std::string>{});
}

TEST_F(QuitFlowTest, stayingBringsBackAPanelThatWasThere)
{
    for (const bool shown : {true, false}) {
        stage_.trace.clear();
        stage_.panelShows = shown;
        requests(1);
        flow_.quit();
        stage_.answered(Answer::stay);
        EXPECT_EQ(stage_.trace, shown ? "out;ask;front;" : "out;ask;");
        EXPECT_TRUE(notchIsOpen());
        EXPECT_FALSE(flow_.shouldTerminate());
    }
    flow_.quit();
    EXPECT_EQ(stage_.trace, "out;ask;out;ask;") << "one may ask again after staying";
}

TEST_F(QuitFlowTest, onlyASecondSignalSoonAfterEndsWithRequestsWaiting)
{
    const struct {
        const char* name;
        std::vector<double> signals; // Moments.
        const char* trace;
    } rows[] = {
        {"one", {10}, ""},
        {"at the edge", {10, 12}, "terminate;"},
        {"too late", {10, 12.01}, ""},
        {"the late one counts as a first", {10, 12.01, 14}, "terminate;"},
    };
    requests(1);
    for (const auto& row : rows) {
        FakeQuitStage stage;
        QuitFlow flow(model_, stage);
        for (const double moment : row.signals) {
            model_.collapse();
            flow.signalled(Uptime{moment});
        }
        EXPECT_EQ(stage.trace, row.trace) << row.name;
        EXPECT_EQ(notchIsOpen(), stage.trace.empty()) << row.name;
    }
    EXPECT_EQ(decisions(), std::vector<std::string>{});
}

} // namespace
} // namespace notch
