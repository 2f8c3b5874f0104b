// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchPanel.h"
#include "support/x11/OtherProgram.h"
#include "support/x11/PrivateDesktop.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QMouseEvent>
#include <QStringList>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace notch {

// Content that counts what reaches it.
class CountingContent final : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

// The panel on a desktop of the test's own, with another program on it.
class PanelOnDesktop : public testing::Test {
protected:
    void SetUp() override
    {
        if (const auto reason = PrivateDesktop::missing(); !reason.empty())
            GTEST_SKIP() << reason;
    }

    // Monitors as xrandr --setmonitor wants them; without any the whole desktop is one screen.
    void launch(const char* scale = "1", const QStringList& monitors = {})
    {
        qputenv("QT_SCALE_FACTOR", scale);
        desktop.emplace();
        for (const auto& monitor : monitors) {
            const QStringList option{QStringLiteral("--setmonitor")};
            ASSERT_TRUE(PrivateDesktop::run(
                QStringLiteral("xrandr"), option + monitor.split(QLatin1Char(' '))));
        }
        other.emplace();
        for (int patience = 100; !other->windowManagerRuns(); --patience)
            ASSERT_GT(patience, 0) << "No window manager";
        application.emplace(argc, argv);
        panel.emplace();
        auto owned = std::make_unique<CountingContent>();
        content = owned.get();
        panel->setContentView(
            std::make_unique<NotchViewport>(std::move(owned), [](double) { return 300.0; }));
        panel->measureContent(480);
    }

    // Runs the event loop until then; false after ten seconds, which no healthy run comes near.
    static bool eventually(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(10'000);
        QTimer wake; // What another program has seen wakes nobody here.
        wake.start(5);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }
    bool activates(OtherProgram::Window window)
    {
        other->activate(window);
        return eventually([&] { return other->focus() == window; });
    }
    // The server has done everything that this program has asked for.
    void synchronise()
    {
        QCoreApplication::processEvents();
        panel->pointerPosition();
        QCoreApplication::processEvents();
    }

    int argc = 1;
    char programName[5] = "test";
    char* argv[2] = {programName, nullptr};
    std::optional<PrivateDesktop> desktop;
    std::optional<OtherProgram> other;
    std::optional<QApplication> application;
    std::optional<NotchPanel> panel;
    CountingContent* content = nullptr; // The panel's.
};

} // namespace notch
