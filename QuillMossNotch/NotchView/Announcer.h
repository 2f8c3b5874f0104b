// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <string>

namespace notch {

// Says something to a screen reader whoever has the keyboard: a notification that nobody sees,
// whose coming into view readers speak. This toolkit's version has no event for announcements, and
// the readers of its time know none.
class Announcer final : public QWidget {
public:
    explicit Announcer(QWidget* parent);

    void announce(const std::string& text);
};

} // namespace notch
