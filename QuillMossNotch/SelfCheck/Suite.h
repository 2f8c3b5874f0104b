// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace notch {

// A rule of the model, and runs that show it, in the language of Rehearsal/StartedModel.h.
struct TraceCheck {
    const char* text;
    const char* trace; // Without its last line's end.
    // When given, each line of the trace is a run of its own, its operations in the place of "...".
    const char* frame = nullptr;
};

// A wait that ends neither early nor late.
struct DelayCheck {
    const char* text;
    const char* begin; // The operations before the wait.
    double seconds;
    const char* during; // The state until a millisecond before the end,
    const char* over; // and from a millisecond after it.
};

// One part of the self-check. Writes a line for each check, goes on after a failure, and counts.
// What was found in place of what was expected is told on stderr.
class Suite {
public:
    // `label` goes between the result and the check's text. `out` must outlive the suite.
    Suite(std::ostream& out, std::string label);

    void check(const std::string& text, bool holds);
    void check(const std::string& text, const std::string& found, const std::string& expected);
    void check(std::span<const TraceCheck> traces);
    void check(std::span<const DelayCheck> delays);

    // Writes the summary, the count between its two parts. Returns the count of failures.
    int end(const std::string& name, const std::string& promise);

private:
    std::ostream& out_;
    std::string label_;
    int failures_ = 0;
};

} // namespace notch
