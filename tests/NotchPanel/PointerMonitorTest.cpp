// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerMonitor.h"

#include "PanelOnDesktop.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace notch {
namespace {

class PointerOnDesktop : public PanelOnDesktop {
protected:
    void SetUp() override
    {
        launch();
        other.openFullScreenWindow();
        show();
        other.moveTo(100, 500);
        synchronise();
        monitor.emplace([this](PointerMonitor::Event event) {
            seen += "mdlr"[static_cast<int>(event)]; // Moved, dragged, left, right.
        });
        synchronise();
    }
    // Everything seen since the last call, once this was among it.
    std::string seenWith(char awaited)
    {
        eventually([&] { return seen.find(awaited) != std::string::npos; });
        synchronise(); // What the monitor asked for on this occasion holds.
        return std::exchange(seen, {});
    }
    void release(std::uint8_t button)
    {
        other.release(button);
        EXPECT_TRUE(eventually([&] { return !monitor->watchesMotion(); }));
        synchronise();
    }
    // The same, with a click beside the surface that is seen as the end: nothing is missing.
    std::string seenSoFar()
    {
        other.press(3);
        auto all = seenWith('r');
        release(3);
        EXPECT_TRUE(all.ends_with('r'));
        return all.substr(0, all.find('r'));
    }

    std::optional<PointerMonitor> monitor;
    std::string seen;
};

TEST_F(PointerOnDesktop, tellsPressesElsewhereAndOnlyThose)
{
    other.press();
    release(1);
    EXPECT_EQ(seenSoFar(), "l");
    other.press(2);
    release(2);
    other.press(4); // A wheel step.
    other.release(4);
    EXPECT_EQ(seenSoFar(), "");
    other.moveTo(640, 150);
    EXPECT_EQ(seenWith('m'), "m");
    other.press();
    EXPECT_TRUE(isPressed());
    release(1);
    other.moveTo(100, 500);
    EXPECT_EQ(seenSoFar(), "m");
}

TEST_F(PointerOnDesktop, freePointerWakesUsOnlyAtTheSurfacesEdge)
{
    for (int x = 0; x < 100; ++x)
        other.moveTo(100 + x, 500);
    EXPECT_EQ(seenSoFar(), "");
    other.moveTo(640, 10);
    EXPECT_EQ(seenWith('m'), "m");
    other.moveTo(405, 8); // Under the shoulder, within the window.
    EXPECT_EQ(seenWith('m'), "m");
}

TEST_F(PointerOnDesktop, dragOntoTheSurfaceIsTold)
{
    other.press();
    EXPECT_EQ(seenWith('l'), "l");
    // That the pointer crosses the surface's edge may be told besides, before or after.
    other.moveTo(640, 10);
    EXPECT_THAT(seenWith('d'), testing::HasSubstr("d"));
    other.moveTo(100, 500);
    EXPECT_THAT(seenWith('d'), testing::HasSubstr("d"));
    release(1);
    other.moveTo(200, 500);
    EXPECT_EQ(seenSoFar(), "");
}

} // namespace
} // namespace notch
