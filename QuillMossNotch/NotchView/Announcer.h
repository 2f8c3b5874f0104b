// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <string>

namespace notch {

// Says something to a screen reader, no matter which window has the keyboard: an unseen
// notification, which readers speak when it appears. This toolkit's version has no event for
// announcements, and the readers of its time know none.
class Announcer final : public QWidget {
public:
    explicit Announcer(QWidget* parent);

    void announce(const std::string& text);
};

} // namespace notch
