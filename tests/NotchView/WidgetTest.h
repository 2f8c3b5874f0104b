// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/NotchView.h"
#include "support/FakeOutside.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QCoreApplication>
#include <QDeadlineTimer>

namespace notch {

// A test of widgets: without a screen, on the real model with everything outside made up. Its
// QApplication is that of WidgetTest.cpp.
class WidgetTest : public testing::Test {
protected:
    WidgetTest()
    {
        model.start();
        outside.time.runPosted();
        model.subscribe([this] { layOut(); });
        layOut();
        view.show();
        outside.takeCalls();
    }

    void layOut()
    {
        view.refresh();
        view.resize(480, view.fittingHeight(480));
    }
    // A request that has been on show for long enough.
    void arm(const std::string& id)
    {
        outside.request(id);
        passGuard();
        outside.takeCalls();
    }
    void passGuard() { outside.time.advance(Seconds{0.5}); }

    QAbstractButton& button(const char* name) const
    {
        return *view.findChild<QAbstractButton*>(QLatin1String(name));
    }
    QString shown(const char* name) const
    {
        return view.findChild<QWidget*>(QLatin1String(name))->property("text").toString();
    }
    std::vector<std::string> decisions()
    {
        auto decided = outside.takeCalls("server.decide");
        return decided;
    }

    // True when the condition held within ten seconds, which no healthy run comes near.
    static bool runUntil(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(10'000);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return condition();
    }

    FakeOutside outside;
    AppModel model{outside.seams()};
    NotchView view{model, outside.preferences, outside.time};
};

} // namespace notch
