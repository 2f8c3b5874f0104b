// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "NotchPanel/Raising.h"

#include "Rehearsal/VirtualTime.h"
#include "SelfCheck/FakeSurface.h"

#include <gtest/gtest.h>

namespace notch {
namespace {

TEST(Raising, panelComesToTheFrontForEachMatterAndWhenHiddenButFightsNoDuel)
{
    VirtualTime time;
    FakeSurface panel;
    Raising raising(panel, time, time);
    const auto expectRaises = [&](int raises, const char* when) {
        EXPECT_EQ(std::exchange(panel.raises, 0), raises) << when;
    };
    const auto insist = [&](double seconds) { // The other window comes back every 0.1 seconds.
        for (int i = 0; i < seconds * 10; ++i) {
            raising.hidden();
            time.advance(Seconds{0.1});
        }
    };
    raising.setMatter("first");
    raising.setMatter("first");
    expectRaises(1, "a request comes");
    EXPECT_TRUE(panel.coverWatched);
    insist(9);
    expectRaises(3, "a locker insists");
    insist(10);
    expectRaises(3, "it goes on");
    time.advance(Seconds{20});
    expectRaises(1, "hidden for good");
    raising.setMatter("second");
    expectRaises(1, "another request");
    insist(9);
    raising.setMatter(std::nullopt);
    EXPECT_FALSE(panel.coverWatched);
    panel.raises = 0;
    time.advance(Seconds{20});
    expectRaises(0, "nothing waits");
}

} // namespace
} // namespace notch
