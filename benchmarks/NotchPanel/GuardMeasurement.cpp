// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// GuardMeasurement [TRIES]
//   NOTCH_COMPOSITOR= tools/private-desktop build/release/benchmarks/NotchPanel/GuardMeasurement
// Measures the decision guard of the built program as a person meets it, from outside: how long
// after the first pixel of the allow button on the X server the button turns to its armed look, and
// which of two clicks decides, one 0.45 s and one 0.55 s after that pixel. With a small and a large
// request, with idle and with busy cores. None of the first may decide, and all of the second must.
// Without a compositor, since what another client reads is what that has drawn, later than the
// server has had it. A try in which this program itself was held up is made again.

#include "support/ChildProcess.h"
#include "support/WaitUntil.h"
#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace notch {
namespace {

using SteadyClock = std::chrono::steady_clock;
using std::chrono::duration;

constexpr duration<double> tooEarly{0.449};
constexpr duration<double> lateEnough{0.55};
constexpr duration<double> patience{0.010};

struct Outcome {
    double armedAfter = 0; // Seconds after the first pixel; 0: it was decided before.
    bool decided = false;
};

std::unique_ptr<ChildProcess> ask(const std::string& command)
{
    auto hook = std::make_unique<ChildProcess>(
        PROGRAM_PATH, std::vector<std::string>{"--hook", "--source", "quillmoss"});
    hook->write(R"({"hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":)"
                R"({"command":")"
                + command + R"("},"session_id":"s","cwd":"/"})");
    hook->closeInput();
    return hook;
}

class Person {
public:
    // Learns where the button is and what it looks like armed; leaves the notch closed.
    explicit Person(const std::string& command)
        : command_(command)
    {
        if (!notch_.waitFor("展开 QuillMoss 刘海"))
            throw std::runtime_error("The notch did not come up.");
        const auto hook = ask(command_);
        std::this_thread::sleep_for(std::chrono::seconds(3));
        const auto allow = notch_.waitFor("允许本次", [](const auto& it) { return it.isEnabled; });
        const auto deny = notch_.showing("拒绝");
        if (!allow || !deny)
            throw std::runtime_error("The request was not shown.");
        allow_ = *allow;
        deny_ = *deny;
        other_.moveTo(allow_.x, allow_.y); // It has another look under the pointer.
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        armed_ = colour();
        other_.clickAt(deny_.x, deny_.y);
        hook->finish();
        close();
    }

    // Again until this program itself was not held up on the way.
    Outcome decideAfter(duration<double> delay)
    {
        for (;;)
            if (const auto outcome = tryDeciding(delay))
                return *outcome;
    }

private:
    std::optional<Outcome> tryDeciding(duration<double> delay)
    {
        other_.moveTo(allow_.x, allow_.y);
        const auto hook = ask(command_);
        auto seen = SteadyClock::now();
        auto before = seen;
        while (colour() == ground_)
            before = std::exchange(seen, SteadyClock::now());
        seen = SteadyClock::now();
        bool heldUp = seen - before > patience;
        Outcome outcome;
        const auto look = [&] {
            if (outcome.armedAfter == 0 && colour() == armed_)
                outcome.armedAfter = duration<double>(SteadyClock::now() - seen).count();
        };
        while (SteadyClock::now() - seen < delay)
            look();
        other_.press();
        heldUp = heldUp || SteadyClock::now() - seen > delay + patience;
        other_.release();
        while (SteadyClock::now() - seen < delay + std::chrono::milliseconds(600))
            look();
        other_.clickAt(deny_.x, deny_.y); // Meets nothing if the request has been decided.
        outcome.decided = hook->finish().output.find("allow") != std::string::npos;
        close();
        return heldUp ? std::nullopt : std::optional(outcome);
    }

    // Beside the words, on the button's own ground.
    OtherProgram::Colour colour() { return other_.colourAt(allow_.x - 60, allow_.y); }
    // Waits until the receipt has gone and the notch has closed.
    void close()
    {
        other_.moveTo(20, 700);
        if (!waitUntil([this] { return notch_.showing("展开 QuillMoss 刘海").has_value(); }))
            throw std::runtime_error("The notch did not close.");
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        ground_ = colour();
    }

    std::string command_;
    OtherProgram other_;
    AccessibleProgram notch_{"QuillMossNotch"};
    AccessibleControl allow_;
    AccessibleControl deny_;
    OtherProgram::Colour armed_ = 0;
    OtherProgram::Colour ground_ = 0;
};

void measure(const char* name, const std::string& command, int tries)
{
    Person person(command);
    std::vector<double> armed;
    int early = 0;
    int late = 0;
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto before = person.decideAfter(tooEarly);
        early += before.decided ? 1 : 0;
        if (!before.decided)
            armed.push_back(before.armedAfter);
        late += person.decideAfter(lateEnough).decided ? 1 : 0;
    }
    std::ranges::sort(armed);
    std::printf("%-14s  %3d of %d decided at %.3f s, %3d of %d at %.2f s", name, early, tries,
        tooEarly.count(), late, tries, lateEnough.count());
    if (!armed.empty())
        std::printf("; armed after %.3f to %.3f s, median %.3f s", armed.front(), armed.back(),
            armed[armed.size() / 2]);
    std::puts("");
    std::fflush(stdout);
}

void run(int tries)
{
    // As many lines as the bridge's mebibyte holds, on whose way each break is three bytes long.
    std::string large = "echo";
    for (int line = 0; line < 300'000; ++line)
        large += "\\n";
    const ChildProcess resident(PROGRAM_PATH);
    measure("small, idle", "rm -rf ./old", tries);
    measure("large, idle", large, tries);
    const std::vector<std::string> endless{"-c", "while :; do :; done"};
    const ChildProcess first("/bin/sh", endless);
    const ChildProcess second("/bin/sh", endless);
    measure("small, busy", "rm -rf ./old", tries);
    measure("large, busy", large, tries);
}

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    if (!std::getenv("NOTCH_NAMESPACE")) {
        std::fputs("Runs only on a desktop of its own: tools/private-desktop PROGRAM\n", stderr);
        return 2;
    }
    try {
        notch::run(argc > 1 ? std::atoi(argv[1]) : 100);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
