// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Pointer/PointerMonitor.h"

#include "PanelOnDesktop.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace notch {
namespace {

using Event = PointerMonitor::Event;

class PointerOnDesktop : public PanelOnDesktop {
protected:
    void watch()
    {
        launch();
        below = other->openFullScreenWindow();
        panel->applyFrame({400, 0, 480, 300}, 480);
        panel->orderFront();
        synchronise();
        other->moveTo(100, 500);
        synchronise();
        monitor.emplace([this](Event event) {
            seen += names[static_cast<std::size_t>(event)];
            seen += ' ';
        });
        synchronise();
    }
    // Everything seen since the last call, once it ends like this.
    std::string seenUntil(const std::string& end)
    {
        eventually([&] { return seen.ends_with(end); });
        synchronise(); // What the monitor asked for on this occasion holds.
        return std::exchange(seen, {});
    }
    // The same, whatever else there was.
    bool sees(const std::string& what)
    {
        const bool found = eventually([&] { return seen.find(what) != std::string::npos; });
        synchronise();
        seen.clear();
        return found;
    }
    void release(std::uint8_t button)
    {
        other->release(button);
        EXPECT_TRUE(eventually([&] { return !monitor->watchesMotion(); }));
        synchronise();
    }
    // The same, with a click that is seen as the end: nothing that came before is missing.
    std::string seenSoFar()
    {
        other->press(3);
        const auto all = seenUntil("right ");
        release(3);
        return all.substr(0, all.size() - std::string("right ").size());
    }

    static constexpr const char* names[] = {"moved", "dragged", "left", "right"};
    OtherProgram::Window below = 0;
    std::optional<PointerMonitor> monitor;
    std::string seen;
};

TEST_F(PointerOnDesktop, tellsPressesElsewhereAndOnlyThose)
{
    watch();
    other->press();
    release(1);
    EXPECT_EQ(seenUntil("left "), "left ");
    other->press(2);
    release(2);
    other->press(4); // A wheel step.
    other->release(4);
    EXPECT_EQ(seenSoFar(), "");
    other->moveTo(640, 150);
    EXPECT_EQ(seenUntil("moved "), "moved ");
    other->press();
    EXPECT_TRUE(eventually([&] { return content->presses == 1; }));
    release(1);
    other->moveTo(100, 500);
    EXPECT_EQ(seenSoFar(), "moved ");
}

TEST_F(PointerOnDesktop, freePointerWakesUsOnlyAtTheSurfacesEdge)
{
    watch();
    for (int x = 0; x < 100; ++x)
        other->moveTo(100 + x, 500);
    EXPECT_EQ(seenSoFar(), "");
    other->moveTo(640, 10);
    EXPECT_EQ(seenUntil("moved "), "moved ");
    other->moveTo(405, 8); // Under the shoulder, within the window.
    EXPECT_EQ(seenUntil("moved "), "moved ");
}

TEST_F(PointerOnDesktop, dragOntoTheSurfaceIsTold)
{
    watch();
    other->press();
    EXPECT_EQ(seenUntil("left "), "left ");
    // That the pointer crosses the surface's edge may be told besides, before or after.
    other->moveTo(640, 10);
    EXPECT_TRUE(sees("dragged "));
    other->moveTo(100, 500);
    EXPECT_TRUE(sees("dragged "));
    release(1);
    other->moveTo(200, 500);
    EXPECT_EQ(seenSoFar(), "");
}

} // namespace
} // namespace notch
