// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerMonitor.h"

#include "PanelOnDesktop.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

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
        monitor.emplace(PointerMonitor::Handlers{
            .elsewhere =
                [this](PointerMonitor::Event event) {
                    seen += "mdlr"[static_cast<int>(event)]; // Moved, dragged, left, right.
                },
            .pressed = [this](quint32 time) { presses.push_back(time); },
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
    void press(std::uint8_t button = 1)
    {
        const auto before = presses.size();
        other.press(button);
        EXPECT_TRUE(eventually([&] { return presses.size() == before + 1; }));
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
        press(3);
        auto all = seenWith('r');
        release(3);
        EXPECT_TRUE(all.ends_with('r'));
        return all.substr(0, all.find('r'));
    }

    std::optional<PointerMonitor> monitor;
    std::string seen;
    std::vector<quint32> presses;
};

TEST_F(PointerOnDesktop, tellsPressesElsewhereAndOnlyThose)
{
    press();
    release(1);
    EXPECT_EQ(seenSoFar(), "l");
    press(2);
    release(2);
    other.press(4); // A wheel step.
    other.release(4);
    EXPECT_EQ(seenSoFar(), "");
    other.moveTo(640, 150);
    EXPECT_EQ(seenWith('m'), "m");
    press();
    EXPECT_TRUE(isPressed());
    release(1);
    other.moveTo(100, 500);
    EXPECT_EQ(seenSoFar(), "m");
    EXPECT_TRUE(std::ranges::is_sorted(presses)) << "each has the server's time";
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
    press();
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
