// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Rehearsal/FakeDependencies.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace notch {
namespace {

TEST(AppModelThreads, takeCallbacksFromAnywhereAndNoneAfterItsEnd)
{
    FakeDependencies fakes;
    auto model = std::make_unique<AppModel>(fakes.seams());
    model->start();
    const auto run = [](const auto& callbacks, ApprovalRequest request) {
        for (int turn = 0; turn < 500; ++turn) {
            request.id = request.eventName + std::to_string(turn);
            callbacks.onRequest(request);
            callbacks.onRemoval(request.id);
        }
    };
    std::thread bridge([&, request = fakes.hookRequest("")] {
        run(fakes.server.callbacks, request);
        fakes.server.callbacks.onUnreachable();
    });
    std::thread monitor([&, request = fakes.nativeRequest("")] {
        run(fakes.monitor.callbacks, request);
        fakes.monitor.callbacks.onStatus("seen");
    });
    while (!model->state().lastHookAt)
        fakes.time.runPosted();
    fakes.server.callbacks.onRequest(fakes.hookRequest("late")); // Posted, and not run yet.
    fakes.monitor.callbacks.onStatus("late");
    model->openHost({});
    model.reset();
    fakes.calls.clear();
    fakes.workspace.openFailed();
    bridge.join();
    monitor.join();
    fakes.time.advance(Seconds{5});
    EXPECT_TRUE(fakes.calls.empty());
    EXPECT_EQ(fakes.time.timers(), 0U);
}

} // namespace
} // namespace notch
