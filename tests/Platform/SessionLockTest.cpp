// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/SessionLock/SessionLock.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <systemd/sd-bus.h>

namespace notch {
namespace {

// A screen locker on the private desktop's bus. It answers when it is given time to.
class Locker {
public:
    Locker()
    {
        sd_bus_open_user(&bus_);
        const auto answer = [](sd_bus_message* question, void* self, sd_bus_error*) {
            auto& locker = *static_cast<Locker*>(self);
            ++locker.answers_;
            return sd_bus_reply_method_return(question, "b", locker.active);
        };
        static const sd_bus_vtable methods[] = {SD_BUS_VTABLE_START(0),
            SD_BUS_METHOD("GetActive", "", "b", answer, 0), SD_BUS_VTABLE_END};
        sd_bus_add_object_vtable(bus_, nullptr, "/lock", "org.mate.ScreenSaver", methods, this);
    }
    ~Locker() { sd_bus_flush_close_unref(bus_); }
    Locker(const Locker&) = delete;
    Locker& operator=(const Locker&) = delete;

    void tell(const char* interface, bool on)
    {
        active = on ? 1 : 0;
        sd_bus_emit_signal(bus_, "/lock", interface, "ActiveChanged", "b", active);
        sd_bus_flush(bus_);
    }
    // How often it has said whether the session is locked.
    int answers()
    {
        while (sd_bus_process(bus_, nullptr) > 0) { }
        return answers_;
    }

    int active = 0;

private:
    sd_bus* bus_ = nullptr;
    int answers_ = 0;
};

class SessionLockTest : public testing::Test {
protected:
    static constexpr auto saver = "org.mate.ScreenSaver";

    bool becomes(bool locked)
    {
        return loop.runUntil([&] { return lock.isLocked() == locked; });
    }

    EventLoop loop;
    Locker locker;
    int changes = 0;
    SessionLock lock{[this] { ++changes; }, std::chrono::milliseconds(50)};
};

TEST_F(SessionLockTest, lastsAsLongAsItsLockerSays)
{
    locker.tell("org.mate.SomethingElse", true);
    locker.tell(saver, true);
    EXPECT_TRUE(becomes(true));
    EXPECT_TRUE(loop.runUntil([&] { return locker.answers() == 3; }));
    EXPECT_TRUE(lock.isLocked());
    locker.tell(saver, false);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes, 2);
}

TEST_F(SessionLockTest, endsWithoutAWordOfTheLocker)
{
    {
        Locker other;
        other.tell(saver, true);
        EXPECT_TRUE(becomes(true));
    }
    EXPECT_TRUE(becomes(false)) << "it has left the bus";
    locker.tell(saver, true);
    EXPECT_TRUE(becomes(true));
    EXPECT_TRUE(becomes(false)) << "it hangs";
    locker.tell(saver, true);
    EXPECT_TRUE(becomes(true));
    locker.active = 0;
    EXPECT_TRUE(loop.runUntil([&] { return locker.answers() > 0; }));
    EXPECT_TRUE(becomes(false)) << "it says no";
}

} // namespace
} // namespace notch
