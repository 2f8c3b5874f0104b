// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/Workspace.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// A desktop on which the host is installed as a test says.
class FakeWorkspace final : public Workspace {
public:
    explicit FakeWorkspace(std::vector<std::string>& calls)
        : calls_(calls)
    {
    }

    bool isInstalled(HostApplication application) const override
    {
        return installed.contains(application);
    }
    void open(HostApplication application, std::function<void()> failed) override
    {
        calls_.emplace_back(
            application == HostApplication::quillmossAI ? "open quillmossAI" : "open quillmoss");
        openFailed = std::move(failed);
    }
    void openAccessibilitySettings() override { calls_.emplace_back("open settings"); }

    std::set<HostApplication> installed{HostApplication::quillmoss, HostApplication::quillmossAI};
    std::function<void()> openFailed; // Of the last open().

private:
    std::vector<std::string>& calls_;
};

} // namespace notch
