// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "EndToEnd/NotchOnDesktop.h"
#include "Platform/Accessibility/DesktopTrust.h"
#include "Platform/RunningApplications/RunningApplications.h"
#include "support/HostTrees.h"

namespace notch {
namespace {

using QuestionTest = NotchOnDesktop;

TEST_F(QuestionTest, aQuestionBehindOpensTheNotchAndItsButtonBringsTheHostAndPressesNothing)
{
    DesktopTrust(Seconds{5}).requestTrust();
    startResident();
    const RunningApplications hosts({"quillmoss"});
    const auto becomesActive = [&](bool active) {
        return waitUntil([&] {
            const auto running = hosts.running();
            return running.size() == 1 && running.front().isActive == active;
        });
    };
    ChildProcess host(QT_HOST_PATH);
    host.write("show\n" + questionTree + ".\n");
    ASSERT_EQ(host.readLine(), "done\n");
    ASSERT_TRUE(becomesActive(true));
    other_.openWindow("editor");
    ASSERT_TRUE(becomesActive(false));
    EXPECT_TRUE(appears("QuillMoss 等你回答"));
    EXPECT_TRUE(appears("第 2 / 3 页"));
    click("去回答");
    EXPECT_TRUE(becomesActive(true));
    EXPECT_TRUE(disappears("去回答"));
    host.write("nothing\n");
    EXPECT_EQ(host.readLine(), "done\n") << "a button of the host was pressed";
}

} // namespace
} // namespace notch
