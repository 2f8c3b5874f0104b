// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QTemporaryDir>

#include <array>
#include <memory>
#include <string>

namespace notch {

// The toolkit's application on the platform that a mode needs, whatever the environment prefers. It
// is given a command line of our own making: from the real one it would take options of its own.
class Toolkit {
public:
    enum class Platform : std::uint8_t { x11, offscreen };

    explicit Toolkit(Platform platform);

private:
    std::unique_ptr<QTemporaryDir> runtimeFolder_; // Null on x11.
    bool scaleAnnounced_; // In the environment, while the toolkit starts.
    std::string program_ = "QuillMossNotch"; // Also the class of its windows.
    std::string flag_ = "-platform";
    std::string platform_;
    std::array<char*, 4> arguments_;
    int count_ = 3;
    QApplication application_;
};

} // namespace notch
