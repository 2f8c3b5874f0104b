// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST_F(AppModelTest, opensOnlyForAPointerThatStaysAndDidNotCloseIt)
{
    expectTrace(R"(enter, wait 0.21, leave, wait 1                | closed
enter, wait 1, close, enter, wait 1            | closed inside blocked
leave, enter, wait 1                           | open inside
close, leave, off hoverToExpand, enter, wait 1 | closed inside
)");
}

TEST(AppModelSurface, closesByItselfOnlyWhenNothingNeedsItAtTheEndOfTheDelay)
{
    expectEach("open, enter, leave, wait 0.6, ..., wait 1", R"(                        | closed
enter                   | open inside
ask A                   | open [A] armed
question                | open question Q ready
open                    | open
off autoCollapse        | open
off autoCollapse, leave | open
)");
}

TEST(AppModelSurface, closesForAnOutsideClickOnlyWhenNothingNeedsIt)
{
    expectEach("open, ..., clickOutside", R"(                 | closed
enter            | open inside
ask A            | open [A]
ask A, gone A    | open receipt unavailable
question         | open question Q
off autoCollapse | open
)");
}

TEST(AppModelSurface, opensTheEditionThatAskedOrTheOtherOne)
{
    expectEach("...", R"(host quillmoss              | closed -> open quillmoss
host demo                   | closed -> open quillmoss
host quillmossAI            | closed -> open quillmossAI
withoutAI, host quillmossAI | closed -> open quillmoss
onlyAI, host quillmoss      | closed -> open quillmossAI
noHost, host demo, message  | 未在 Applications 找到 QuillMoss，请手动打开  open
)");
}

TEST_F(AppModelTest, opensTheEditionOfTheCurrentRequestAndSaysThatItFailed)
{
    model.openHost({});
    auto request = fakes.hookRequest("A");
    request.source = "quillmossAI";
    fakes.report(fakes.server.callbacks.onRequest, request);
    model.openHost({});
    EXPECT_EQ(fakes.takeCalls("open"), (Calls{"open quillmoss", "open quillmossAI"}));
    model.collapse();
    fakes.workspace.openFailed();
    EXPECT_EQ(after("message"), "无法打开 QuillMoss，请手动打开  open [A]");
}

TEST_F(AppModelTest, copiesWhatIsOnShowAndMarksIt)
{
    expectTrace(R"(ask A, ask B, copy, pasted | ls  open [A] B copied A
details, copy, pasted      | {"command":"ls"}  open [A] B details copied A
select B                   | open A [B]
)");
}

} // namespace
} // namespace notch
