// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TemporaryDirectory.h"

#include <QProcess>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace notch {

// A virtual X server with a window manager, of this test alone; $DISPLAY names it. Make the
// QApplication after it. Everything that it started ends with it.
class PrivateDesktop {
public:
    // Why a test that needs one must be skipped; empty: it need not.
    static std::string missing();

    explicit PrivateDesktop(const QString& screen = QStringLiteral("1280x800x24"));
    ~PrivateDesktop();
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;

    // Runs beside the test until stopLast() or the end. False: there is none to start.
    bool startCompositor();
    // Ends what was started last.
    void stopLast();
    // Runs to its end; true for status 0.
    static bool run(const QString& program, const QStringList& arguments);

private:
    void start(const QString& program, const QStringList& arguments);

    TemporaryDirectory directory_;
    std::vector<std::unique_ptr<QProcess>> processes_;
};

} // namespace notch
