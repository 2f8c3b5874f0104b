// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/ChildProcess.h"
#include "support/desktop/AccessibleProgram.h"
#include "support/x11/OtherProgram.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace notch {

// A test with a resident application on this process's private desktop, which nobody has touched.
class NotchOnDesktop : public testing::Test {
public:
    // Empty: the tests can run here.
    static std::string& reasonToSkip();

protected:
    static constexpr const char* allow = "允许本次";
    static constexpr const char* deny = "拒绝";
    static constexpr const char* nextRequest = "下一条请求";
    static constexpr const char* closeNotch = "暂时收起，不改变审批决定";

    void SetUp() override;

    // Returns when it is on the screen and serves hooks.
    void startResident(std::vector<std::string> arguments = {});
    // A hook of the host that waits for a decision on this command.
    std::unique_ptr<ChildProcess> ask(const std::string& command = "rm -rf ./old");

    // Waits until it can be pressed and no longer moves; nothing if it does not come to that. While
    // the notch still opens, a click may meet a part that is not drawn yet: see armed().
    std::optional<AccessibleControl> settled(const std::string& control);
    // Waits likewise, and clicks it.
    void click(const std::string& button);
    // Waits until the decision buttons are armed; the notch has opened fully by then.
    AccessibleControl armed();
    bool appears(const std::string& control);
    bool disappears(const std::string& control);

    ChildProcess& resident() { return *resident_; }
    // An answer is the line that it printed.
    static bool isAnswer(const ChildProcess::Ending& ending, const std::string& decision);
    static bool isWithoutAnswer(const ChildProcess::Ending& ending);

    std::unique_ptr<OtherProgram> other_;
    std::unique_ptr<AccessibleProgram> notch_;

private:
    std::unique_ptr<ChildProcess> resident_;
};

} // namespace notch
