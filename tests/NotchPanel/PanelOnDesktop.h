// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchPanel/NotchPanel.h"
#include "support/x11/OtherProgram.h"

#include <QApplication>
#include <QMouseEvent>
#include <QtCore/qtestsupport_core.h>

#include <gtest/gtest.h>

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

// The panel on this process's private desktop, with another program on it.
class PanelOnDesktop : public testing::Test {
protected:
    static constexpr Rect open{400, 0, 480, 300};

    void launch(int scale = 1)
    {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
        qputenv("QT_QPA_PLATFORM", "xcb");
        application.emplace(argc, argv);
        panel.emplace();
        auto owned = std::make_unique<CountingContent>();
        content = owned.get();
        panel->setContentView(std::make_unique<NotchViewport>(
            std::move(owned), [](double, double) { return 300.0; }));
        panel->fitContent(480, 1'000);
    }
    void show(const Rect& frame = open, double surfaceWidth = 480)
    {
        panel->applyFrame(frame, surfaceWidth);
        panel->orderFront();
        synchronise();
    }

    // Runs the event loop until then; false after ten seconds, which no healthy run comes near.
    template <class Condition> static bool eventually(const Condition& condition)
    {
        return QTest::qWaitFor(condition, 10'000);
    }
    bool hasFocus(OtherProgram::Window window)
    {
        return eventually([&] { return other.focus() == window; });
    }
    bool isPressed()
    {
        return eventually([&] { return content->presses == 1; });
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
    OtherProgram other;
    std::optional<QApplication> application;
    std::optional<NotchPanel> panel;
    CountingContent* content = nullptr; // The panel's.
};

} // namespace notch
