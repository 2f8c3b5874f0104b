// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace notch {

// A question that keeps the program's other windows waiting.
struct QuitQuestion {
    std::string message;
    std::string informativeText;
    std::string stay; // The first button; also what every other way out of the question means.
    std::string leave;

    bool operator==(const QuitQuestion&) const = default;
};

// What the choice to quit does to the desktop. Main thread.
class QuitEffects {
public:
    enum class Answer : std::uint8_t { stay, leave };

    virtual ~QuitEffects() = default;
    virtual bool panelIsOnScreen() const = 0;
    // Both also find out anew what the pointer is on.
    virtual void orderPanelFront() = 0;
    virtual void orderPanelOut() = 0;
    // Brings the program to the front and asks. `answered` runs once, later.
    virtual void ask(const QuitQuestion& question, std::function<void(Answer)> answered) = 0;
    // Leaves the event loop; returns.
    virtual void terminate() = 0;
};

} // namespace notch
