// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SelfCheck/Suite.h"

#include "Rehearsal/StartedModel.h"

#include <iostream>
#include <sstream>
#include <utility>

namespace notch {
namespace {

constexpr Seconds nearly{0.001};

std::string played(const TraceCheck& check, const std::string& trace)
{
    return check.frame ? playedEach(check.frame, trace) : StartedModel().played(trace);
}

// The state at the start of the wait, just before its end and just after it.
std::string played(const DelayCheck& check)
{
    StartedModel model;
    model.play(check.begin);
    model.fakes.takeCalls();
    auto states = model.after("") + '\n';
    model.fakes.time.advance(Seconds{check.seconds} - nearly);
    states += model.after("") + '\n';
    model.fakes.time.advance(2 * nearly);
    return states + model.after("");
}

} // namespace

Suite::Suite(std::ostream& out, std::string label)
    : out_(out)
    , label_(std::move(label))
{
}

void Suite::check(const std::string& text, bool holds)
{
    failures_ += holds ? 0 : 1;
    // At once: what breaks the process shall not hide the lines before it.
    out_ << (holds ? "PASS " : "FAIL ") << label_ << ": " << text << std::endl;
}

void Suite::check(const std::string& text, const std::string& found, const std::string& expected)
{
    check(text, found == expected);
    if (found != expected)
        std::cerr << "expected:\n" << expected << "\nfound:\n" << found << '\n';
}

void Suite::check(std::span<const TraceCheck> traces)
{
    for (const auto& each : traces) {
        const auto trace = std::string(each.trace) + '\n';
        check(each.text, played(each, trace), trace);
    }
}

void Suite::check(std::span<const DelayCheck> delays)
{
    for (const auto& each : delays) {
        std::ostringstream expected;
        expected << each.during << '\n' << each.during << '\n' << each.over;
        check(each.text, played(each), expected.str());
    }
}

int Suite::end(const std::string& name, const std::string& promise)
{
    out_ << name << " smoke: " << failures_ << " failures; " << promise << std::endl;
    return failures_;
}

} // namespace notch
