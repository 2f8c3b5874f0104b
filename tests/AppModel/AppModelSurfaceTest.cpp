// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppModel/AppModelTest.h"

namespace notch {
namespace {

TEST(AppModelSurface, opensTheEditionThatAskedOrTheOtherOne)
{
    const std::string_view trace = R"(host quillmoss              | closed -> open quillmoss
host demo                   | closed -> open quillmoss
host quillmossAI            | closed -> open quillmossAI
withoutAI, host quillmossAI | closed -> open quillmoss
onlyAI, host quillmoss      | closed -> open quillmossAI
noHost, host demo, message  | 未在 Applications 找到 QuillMoss，请手动打开  open
)";
    EXPECT_EQ(playedEach("...", trace), trace);
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

} // namespace
} // namespace notch
