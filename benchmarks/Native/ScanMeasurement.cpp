// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// ScanMeasurement [scans|answers|idle [Qt|GTK]]
//   tools/private-desktop build/release/benchmarks/Native/ScanMeasurement
// Measures how the host's window is read and pressed, with hosts in Qt and GTK 3:
//
//   scans    twenty scans of windows of 100 and 1,700 elements, all of them in sight or most of
//            them scrolled away, with idle cores, with busy ones, and with a low priority there;
//            beside libatspi's walk of the same window
//   answers  from a card in the window to its request, and from the click to the delivered press
//   idle     what a host of 100 elements in the background costs, in 60 seconds, here and there

#include "Native/NativeApprovalMonitor.h"
#include "Native/Scan/AccessibilityScan.h"
#include "Platform/Accessibility/AtspiAccessibility.h"
#include "Platform/Accessibility/HostMonitor.h"
#include "support/HostTrees.h"
#include "support/hosts/Host.h"
#include "support/x11/OtherProgram.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <time.h>
#include <unistd.h>
#include <vector>

namespace notch {
namespace {

constexpr int tries = 20;
constexpr int elementsOfRow = 10;
constexpr int lowPriority = 5; // nice(1), of the reading thread alone.

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}
double milliseconds(Seconds time)
{
    return 1000 * time.count();
}

// A page of rows of ten elements each; only `inSight` of the rows lie in the window.
std::string page(int elements, int inSight)
{
    std::string tree = "Window #w @0,0,600,400 \"Chat\"\n  Scroll #page @0,0,600,400\n";
    const int rows = elements / elementsOfRow;
    for (int row = 0; row < rows; ++row) {
        const auto top = std::to_string(row < inSight ? row % 40 * 10 : 400 + 10 * row);
        const auto name = std::to_string(row);
        tree += "    Group #g" + name + " @0," + top + ",600,10\n";
        for (int at = 1; at < elementsOfRow; ++at)
            tree += (at == 1 ? "      Button #e" : "      StaticText #e") + name + "x"
                  + std::to_string(at) + " @" + std::to_string(at * 50) + ',' + top
                  + ",45,10 \"text\"\n";
    }
    return tree;
}

// Two threads that do nothing else.
class BusyCores {
public:
    ~BusyCores()
    {
        done_ = true;
        for (auto& thread : threads_)
            thread.join();
    }

private:
    void spin() const
    {
        while (!done_) { }
    }
    std::atomic<bool> done_ = false;
    std::vector<std::thread> threads_{};

public:
    BusyCores()
    {
        for (int i = 0; i < 2; ++i)
            threads_.emplace_back([this] { spin(); });
    }
};

struct Desktop {
    Desktop()
    {
        DesktopTrust(Seconds{5}).requestTrust();
        program.openWindow("front");
    }
    std::int32_t hostPid() const { return applications.running().at(0).pid; }

    SystemClock clock;
    OtherProgram program;
    RunningApplications applications{{"quillmoss"}};
    AtspiAccessibility accessibility{applications};
};

// Scans

struct Scans {
    std::vector<double> took; // Milliseconds.
    int incomplete = 0;
    int nodes = 0;
};

Scans scan(Desktop& desktop)
{
    Scans scans;
    for (int i = 0; i < tries; ++i) {
        const auto begun = Uptime::now();
        AXRead read(desktop.hostPid(), begun);
        AccessibilityScan(desktop.accessibility, desktop.clock, read).readRoots(false);
        scans.took.push_back(milliseconds(Uptime::now() - begun));
        scans.incomplete += read.complete ? 0 : 1;
        scans.nodes = read.nodes;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return scans;
}

void print(const char* load, const Scans& scans)
{
    std::printf("  %s: median %.1f ms, longest %.1f, incomplete %d of %d\n", load,
        median(scans.took), std::ranges::max(scans.took), scans.incomplete, tries);
}

void measureScans(const std::string& name, const std::string& path)
{
    for (const auto& [elements, inSight] :
        {std::pair{100, 10}, std::pair{1700, 170}, std::pair{1700, 20}}) {
        Desktop desktop;
        Host host(path);
        host.showInBackground(desktop.applications, page(elements, inSight));
        desktop.accessibility.isProcessTrusted();
        scan(desktop); // The first look at a program is always in vain.
        std::printf(
            "%s, %d elements, %d in sight\n", name.c_str(), elements, inSight * elementsOfRow);
        print("idle cores", scan(desktop));
        std::fflush(stdout);
        if (std::system(
                (std::string("printf '  libatspi, elements and ms, twice: '; " CACHED_WALK_PATH " ")
                    + std::to_string(desktop.hostPid()))
                    .c_str())
            != 0)
            std::puts("  (no libatspi)");
        const BusyCores busy;
        print("busy cores", scan(desktop));
        std::thread([&] {
            ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), lowPriority);
            print("busy cores, at a low priority", scan(desktop));
        }).join();
    }
}

// Answers

class Offers {
public:
    void add(const ApprovalRequest& request)
    {
        const std::lock_guard lock(mutex_);
        id_ = request.id;
        changed_.notify_all();
    }
    std::string take()
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !id_.empty(); });
        return std::exchange(id_, {});
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_:
    std::string id_;
};

std::string withCard(std::string tree)
{
    return tree + groupedCardTree.substr(groupedCardTree.find('\n') + 1);
}

void measureAnswers(const std::string& name, const std::string& path)
{
    Desktop desktop;
    Offers offers;
    const auto monitor = makeHostMonitor(desktop.clock);
    monitor->start({.onRequest = [&](const auto& request) { offers.add(request); },
                       .onRemoval = {},
                       .onStatus = {},
                       .onQuestion = {}},
        {.approvals = true});
    Host host(path);
    const auto plain = page(90, 9);
    std::vector<double> toOffer, toPress;
    host.showInBackground(desktop.applications, plain);
    for (int i = 0; i < tries; ++i) {
        host.show(plain);
        // Anywhere between two ticks.
        std::this_thread::sleep_for(std::chrono::milliseconds(1700 + i * 41));
        host.show(withCard(plain));
        const auto shown = Uptime::now();
        const auto id = offers.take();
        toOffer.push_back(milliseconds(Uptime::now() - shown));
        const auto clicked = Uptime::now();
        const bool pressed = monitor->decide(id, Decision::allow);
        toPress.push_back(milliseconds(Uptime::now() - clicked));
        if (!pressed || host.pressed() != "pressed allow\n")
            std::puts("not pressed");
    }
    std::printf("%s, 100 elements: card to request %.0f ms in the median, %.0f at most; click to "
                "its delivery %.1f, %.1f\n",
        name.c_str(), median(toOffer), std::ranges::max(toOffer), median(toPress),
        std::ranges::max(toPress));
}

// Idle

double processorSeconds(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

void measureIdle(const std::string& name, const std::string& path)
{
    Desktop desktop;
    Host host(path);
    host.showInBackground(desktop.applications, page(100, 10));
    const auto monitor = makeHostMonitor(desktop.clock);
    monitor->start({}, {.approvals = true});
    clockid_t theirs = 0;
    ::clock_getcpuclockid(desktop.hostPid(), &theirs);
    std::this_thread::sleep_for(std::chrono::seconds(3));
    const auto before =
        std::pair{processorSeconds(CLOCK_PROCESS_CPUTIME_ID), processorSeconds(theirs)};
    constexpr int length = 60;
    std::this_thread::sleep_for(std::chrono::seconds(length));
    std::printf(
        "%s, 100 elements in the background, no card: %.2f %% of a core here, %.2f in the host\n",
        name.c_str(), 100 * (processorSeconds(CLOCK_PROCESS_CPUTIME_ID) - before.first) / length,
        100 * (processorSeconds(theirs) - before.second) / length);
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    const std::string wanted = argc > 1 ? argv[1] : "";
    const std::string host = argc > 2 ? argv[2] : "";
    const std::vector<std::pair<std::string, void (*)(const std::string&, const std::string&)>>
        measurements{{"scans", notch::measureScans}, {"answers", notch::measureAnswers},
            {"idle", notch::measureIdle}};
    for (const auto& [name, measure] : measurements)
        if (wanted.empty() || wanted == name)
            for (const auto& [toolkit, path] :
                {std::pair{"Qt", QT_HOST_PATH}, std::pair{"GTK", GTK_HOST_PATH}})
                if (host.empty() || host == toolkit)
                    measure(toolkit, path);
}
