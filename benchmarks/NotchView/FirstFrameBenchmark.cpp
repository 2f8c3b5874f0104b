// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// From the receipt of a request to its first frame, painted and handed to the window system, with
// the closed notch on the screen before; and the longest stretch that the main thread worked at
// once, from the receipt to the end of the reveal. Off-screen unless QT_QPA_PLATFORM says otherwise
// (xcb: with what goes to the server).

#include "AppDelegate/NotchStage.h"
#include "Foundation/Json.h"
#include "Platform/MainQueue/QtMainQueue.h"
#include "Rehearsal/FakeDependencies.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace notch {
namespace {

constexpr Seconds settling{0.4}; // A reveal and a little more.

// The notch as the application puts it together, on the real clock, with made-up surroundings.
class Notch final : public QObject {
public:
    Notch()
        : model_(dependencies())
        , stage_(model_, dependencies(),
              {.scheduleLayout = [this] { scheduleLayout(); },
                  .layOut = [this] { stage_.layOut(); }})
    {
        model_.subscribe([this] { scheduleLayout(); });
        model_.start();
        stage_.layOut();
        stage_.orderFront();
        qApp->installEventFilter(this); // The text is made anew for each request.
        work(settling);
    }

    // Milliseconds to the first frame.
    double show(const std::string& id, const std::string& input)
    {
        auto request = fakes_.hookRequest(id);
        request.toolInputJSON = input;
        request.expiresAt = clock_.now() + Seconds{50};
        painted_ = false;
        const auto start = clock_.uptime();
        fakes_.server.callbacks.onRequest(request);
        while (!painted_)
            workOnce();
        const double taken = (clock_.uptime() - start).count() * 1000;
        work(settling);
        return taken;
    }
    void close(const std::string& id)
    {
        const double longest = longestWork_;
        fakes_.server.callbacks.onRemoval(id);
        work(settling / 4);
        model_.dismissFeedback();
        model_.collapse();
        work(settling);
        longestWork_ = longest;
    }
    double takeLongestWork() { return std::exchange(longestWork_, 0.0); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        painted_ = painted_
                || (event->type() == QEvent::Paint
                    && object->objectName() == QStringLiteral("approval-command"));
        return false;
    }

private:
    AppModel::Dependencies dependencies()
    {
        const auto fakes = fakes_.seams();
        return {
            .clock = clock_,
            .mainQueue = queue_,
            .server = fakes.server,
            .nativeMonitor = fakes.nativeMonitor,
            .completionServer = fakes.completionServer,
            .applicationEvents = fakes.applicationEvents,
            .preferences = fakes.preferences,
            .pasteboard = fakes.pasteboard,
            .workspace = fakes.workspace,
            .configuredProfiles = fakes.configuredProfiles,
            .completionHookInstalled = fakes.completionHookInstalled,
            .reminders = fakes.reminders,
        };
    }
    void scheduleLayout()
    {
        if (!std::exchange(scheduled_, true))
            queue_.post([this] {
                scheduled_ = false;
                stage_.layOut();
            });
    }
    void workOnce()
    {
        const auto start = clock_.uptime();
        QCoreApplication::processEvents();
        longestWork_ = std::max(longestWork_, (clock_.uptime() - start).count() * 1000);
    }
    void work(Seconds time)
    {
        for (const auto end = clock_.uptime() + time; clock_.uptime() < end;)
            workOnce();
    }

    SystemClock clock_;
    QtMainQueue queue_;
    FakeDependencies fakes_;
    AppModel model_;
    NotchStage stage_;
    bool scheduled_ = false;
    bool painted_ = false;
    double longestWork_ = 0; // Milliseconds.
};

std::string inputOf(const std::string& command)
{
    return Json(Json::Object{{"command", command}}).compact();
}

std::string lines(int count)
{
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "x\n";
    return text;
}

void measure(Notch& notch, const char* name, const std::string& command, int times)
{
    const auto input = inputOf(command);
    std::vector<double> taken;
    for (int run = 0; run < times; ++run) {
        const auto id = std::to_string(run);
        taken.push_back(notch.show(id, input));
        notch.close(id);
    }
    std::ranges::sort(taken);
    const auto at = [&](std::size_t percent) { return taken[(taken.size() - 1) * percent / 100]; };
    std::printf("%-28s median %6.1f ms, p99 %6.1f ms, longest work at once %6.1f ms\n", name,
        at(50), at(99), notch.takeLongestWork());
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    notch::Notch notch;
    notch::measure(notch, "the first of all, 1 KiB", std::string(1'000, 'x'), 1);
    notch::measure(notch, "1 KiB", std::string(1'000, 'x'), 100);
    notch::measure(notch, "1 MiB, 300,000 lines", notch::lines(300'000), 40);
    notch::measure(notch, "1 MiB, one line", std::string(1'000'000, 'x'), 40);
}
