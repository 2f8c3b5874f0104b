// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerMonitor.h"

#include "PanelOnDesktop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace notch {
namespace {

class PointerOnDesktop : public PanelOnDesktop {
protected:
    using Seen = std::vector<std::string>;

    void SetUp() override
    {
        launch();
        ASSERT_TRUE(hasFocus(other.openFullScreenWindow())); // It is where it will stay.
        show();
        other.moveTo(100, 500);
        synchronise();
        monitor.emplace(PointerMonitor::Handlers{
            .elsewhere =
                [this](PointerMonitor::Event event) {
                    static const Seen words{"moved", "dragged", "left", "right"};
                    seen.push_back(words.at(static_cast<std::size_t>(event)));
                },
            .pressed = [this](quint32 time) { presses.push_back(time); },
        });
        synchronise();
    }
    // Everything seen since the last call, once this was among it.
    Seen seenWith(const std::string& awaited)
    {
        eventually([&] { return std::ranges::find(seen, awaited) != seen.end(); });
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
    Seen seenSoFar()
    {
        press(3);
        auto all = seenWith("right");
        release(3);
        const auto end = std::ranges::find(all, "right");
        EXPECT_EQ(std::distance(end, all.end()), 1);
        all.erase(end, all.end());
        return all;
    }

    std::optional<PointerMonitor> monitor;
    Seen seen;
    std::vector<quint32> presses;
};

TEST_F(PointerOnDesktop, tellsPressesElsewhereAndOnlyThose)
{
    press();
    release(1);
    EXPECT_EQ(seenSoFar(), Seen{"left"});
    press(2);
    release(2);
    other.press(4); // A wheel step.
    other.release(4);
    EXPECT_EQ(seenSoFar(), Seen{});
    other.moveTo(640, 150);
    EXPECT_EQ(seenWith("moved"), Seen{"moved"});
    press();
    EXPECT_TRUE(isPressed());
    release(1);
    other.moveTo(100, 500);
    EXPECT_EQ(seenSoFar(), Seen{"moved"});
    EXPECT_TRUE(std::ranges::is_sorted(presses)) << "each has the server's time";
}

TEST_F(PointerOnDesktop, freePointerWakesUsOnlyAtTheSurfacesEdge)
{
    for (int x = 0; x < 100; ++x)
        other.moveTo(100 + x, 500);
    EXPECT_EQ(seenSoFar(), Seen{});
    other.moveTo(640, 10);
    EXPECT_EQ(seenWith("moved"), Seen{"moved"});
    other.moveTo(405, 8); // Under the shoulder, within the window.
    EXPECT_EQ(seenWith("moved"), Seen{"moved"});
}

TEST_F(PointerOnDesktop, dragOntoTheSurfaceIsTold)
{
    press();
    EXPECT_EQ(seenWith("left"), Seen{"left"});
    // That the pointer crosses the surface's edge may be told besides, before or after.
    other.moveTo(640, 10);
    EXPECT_THAT(seenWith("dragged"), testing::Contains("dragged"));
    other.moveTo(100, 500);
    EXPECT_THAT(seenWith("dragged"), testing::Contains("dragged"));
    release(1);
    other.moveTo(200, 500);
    EXPECT_EQ(seenSoFar(), Seen{});
}

} // namespace
} // namespace notch
