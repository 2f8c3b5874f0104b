// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/FakeOutside.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace notch {
namespace {

TEST(AppModelThreads, takeCallbacksFromAnywhereAndNoneAfterItsEnd)
{
    FakeOutside outside;
    auto model = std::make_unique<AppModel>(outside.seams());
    model->start();
    const auto run = [](const auto& callbacks, ApprovalRequest request) {
        for (int turn = 0; turn < 500; ++turn) {
            request.id = request.eventName + std::to_string(turn);
            callbacks.onRequest(request);
            callbacks.onRemoval(request.id);
        }
    };
    std::thread bridge([&, request = outside.hookRequest("")] {
        run(outside.server.callbacks, request);
        outside.server.callbacks.onUnreachable();
    });
    std::thread monitor([&, request = outside.nativeRequest("")] {
        run(outside.monitor.callbacks, request);
        outside.monitor.callbacks.onStatus("seen");
    });
    while (!model->state().lastHookAt)
        outside.time.runPosted();
    outside.server.callbacks.onRequest(outside.hookRequest("late")); // Posted, and not run yet.
    outside.monitor.callbacks.onStatus("late");
    model->openHost({});
    model.reset();
    outside.calls.clear();
    outside.workspace.openFailed();
    bridge.join();
    monitor.join();
    outside.time.advance(Seconds{5});
    EXPECT_TRUE(outside.calls.empty());
    EXPECT_EQ(outside.time.timers(), 0U);
}

} // namespace
} // namespace notch
