// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <string>

namespace notch {

// What a dialog asks before the host's file is changed.
struct ConfirmQuestion {
    std::string title;
    std::string text;
    std::optional<std::string> preview; // To read before answering; shown as it is.
    std::string confirm; // The first button, and the only way to say yes.
    std::string cancel = "取消";

    bool operator==(const ConfirmQuestion&) const = default;
};

// Asks the person. Main thread.
class ConfirmDialog {
public:
    enum class Answer : bool { cancelled, confirmed };

    virtual ~ConfirmDialog() = default;
    // `answered` runs once, later; never when the dialog's window ends before it is answered.
    virtual void ask(const ConfirmQuestion& question, std::function<void(Answer)> answered) = 0;
};

} // namespace notch
