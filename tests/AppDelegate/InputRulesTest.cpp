// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/InputRules.h"

#include "AppModel/AppModelTest.h"
#include "SelfCheck/FakeSurface.h"

namespace notch {
namespace {

// "own" and "foreign" are events in a window of ours and of another program; "own" answers whether
// the views are kept from it.
class InputRulesTest : public AppModelTest {
protected:
    InputRulesTest()
    {
        operations_.insert({
            {"own",
                [this] { answer(rules_.inApplication(event()) == InputRules::Handling::swallow); }},
            {"foreign", [this] { rules_.systemWide(event()); }},
            {"focus", [this] { panel_.key = true; }},
            {"moveIn", [this] { pointerOnSurface_ = true; }},
            {"moveOut", [this] { pointerOnSurface_ = false; }},
        });
    }

private:
    InputRules::Event event()
    {
        using enum InputRules::Event;
        static const std::map<std::string, InputRules::Event> named{
            {"motion", other},
            {"pressInPanel", pressInPanel},
            {"press", pressElsewhere},
            {"esc", escapeKey},
        };
        return named.at(next());
    }

    FakeSurface panel_;
    bool pointerOnSurface_ = false; // Nothing says so before it is looked for.
    InputRules rules_{model, panel_, [this] { model.setPointerInside(pointerOnSurface_); }};
};

TEST_F(InputRulesTest, escClosesOnlyFromThePanelAndDecidesNothing)
{
    expectTrace(R"(ask A, wait 1, own esc | no  open [A] armed
focus, own motion      | no  open [A] armed
own esc                | yes  closed [A]
open, own esc          | no  open [A]
)");
}

TEST_F(InputRulesTest, aPressElsewhereClosesAnIdleNotch)
{
    expectTrace(R"(open, foreign press        | closed
open, own press            | no  closed
open, own pressInPanel     | no  open
own motion, foreign motion | no  open
moveIn, foreign press      | open inside
moveOut, foreign press     | closed
)");
}

} // namespace
} // namespace notch
