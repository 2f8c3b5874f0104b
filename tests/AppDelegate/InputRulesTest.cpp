// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/InputRules.h"

#include "NotchPanel/FakeSurface.h"
#include "support/FakeOutside.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

using Event = InputRules::Event;
using Handling = InputRules::Handling;

class InputRulesTest : public testing::Test {
protected:
    InputRulesTest() { model_.start(); }

    bool notchIsOpen() const { return model_.state().interaction.expanded(); }

    FakeOutside outside_;
    AppModel model_{outside_.seams()};
    FakeSurface panel_;
    bool pointerOnSurface_ = false;
    InputRules rules_{model_, panel_, [this] { model_.setPointerInside(pointerOnSurface_); }};
};

TEST_F(InputRulesTest, escClosesOnlyFromThePanelAndIsKeptFromTheViews)
{
    model_.expand();
    EXPECT_EQ(rules_.inApplication(Event::escapeKey), Handling::passOn);
    EXPECT_TRUE(notchIsOpen());
    panel_.key = true;
    EXPECT_EQ(rules_.inApplication(Event::escapeKey), Handling::swallow);
    EXPECT_FALSE(notchIsOpen());
    EXPECT_FALSE(panel_.key);
}

TEST_F(InputRulesTest, escDecidesNothing)
{
    outside_.request("A");
    outside_.time.advance(Seconds{1});
    panel_.key = true;
    rules_.inApplication(Event::escapeKey);
    EXPECT_EQ(model_.state().interaction.requests().size(), 1U);
    EXPECT_FALSE(model_.state().actionReady);
}

TEST_F(InputRulesTest, aPressElsewhereClosesAnIdleNotch)
{
    const struct {
        const char* name;
        Event event;
        bool inApplication;
        bool closes;
    } rows[] = {
        {"in another program", Event::pressElsewhere, false, true},
        {"in a window of ours", Event::pressElsewhere, true, true},
        {"in the panel", Event::pressInPanel, true, false},
        {"motion in another program", Event::other, false, false},
        {"motion in a window of ours", Event::other, true, false},
    };
    for (const auto& row : rows) {
        model_.expand();
        if (row.inApplication)
            EXPECT_EQ(rules_.inApplication(row.event), Handling::passOn) << row.name;
        else
            rules_.systemWide(row.event);
        EXPECT_EQ(notchIsOpen(), !row.closes) << row.name;
    }
}

TEST_F(InputRulesTest, thePointerIsLookedForBeforeAPressCounts)
{
    model_.expand();
    pointerOnSurface_ = true; // It has come in, but nothing has said so yet.
    rules_.systemWide(Event::pressElsewhere);
    EXPECT_TRUE(notchIsOpen());
    pointerOnSurface_ = false;
    rules_.systemWide(Event::pressElsewhere);
    EXPECT_FALSE(notchIsOpen());
}

} // namespace
} // namespace notch
