// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Accessibility.h"
#include "Native/ChangeSource.h"
#include "Platform/Accessibility/AtspiNode.h"
#include "Platform/Accessibility/Bus.h"
#include "Platform/Accessibility/DesktopTrust.h"
#include "Platform/Accessibility/TreeFetch.h"
#include "Platform/RunningApplications/RunningApplications.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace notch {

// The windows of the desktop's programs through AT-SPI 2, with a connection of its own. Which of a
// program's frames are windows, and which of them are minimised, the window manager knows.
class AtspiAccessibility final : public Accessibility, public ChangeSource {
public:
    // Borrowed; used on the same thread.
    explicit AtspiAccessibility(const RunningApplications& applications);

    bool isProcessTrusted() override;
    std::optional<AXElement> application(std::int32_t pid) override;
    void setManualAccessibility(const AXElement& application) override;
    std::optional<AXValue> attribute(const AXElement& element, std::string_view name) override;
    std::optional<std::vector<AXValue>> attributes(
        const AXElement& element, std::span<const std::string_view> names) override;
    std::optional<std::int32_t> pidOf(const AXElement& element) override;
    std::optional<std::vector<std::string>> actionNames(const AXElement& element) override;
    bool press(const AXElement& element) override;
    void prefetch(const AXElement& window, const ScreenRect& frame, Uptime deadline) override;
    void forget() override;
    // Of isProcessTrusted() alone. Nothing tells when a bus that cannot be reached can be.
    int changesDescriptor() override { return isUnreachable_ ? -1 : trust_.changesDescriptor(); }
    bool takeChanges() override { return trust_.takeChanges(); }

private:
    bool connect();
    bool dropStale();
    bus::Message call(const AXElement& element, const char* interface, const char* method);
    bus::Message callProperty(
        const AXElement& element, const char* interface, const char* property);
    std::optional<AXElements> children(const AXElement& element);
    // Nothing on the first scan of a program, which may build its tree only once it is asked.
    std::optional<AXElements> windows(const AXElement& application);
    bool meet(const AXElement& application);
    std::optional<AtspiNode> look(const AXElement& element);
    std::optional<int> pressAction(const AXElement& element);

    const RunningApplications& applications_;
    DesktopTrust trust_{callTimeout};
    bus::Connection connection_;
    bool isUnreachable_ = false; // Though the desktop says that it is in use.
    std::map<std::string, std::int32_t> pids_; // By bus name, which is never given twice.
    std::optional<std::int32_t> target_; // The process that is being read.
    std::map<std::string, AtspiToolkit> toolkits_; // Of the programs met, by bus name.
    struct Frame {
        AtspiNode node;
        bool isMinimized = false;
    };
    std::map<std::string, Frame> frames_; // Of the scan that is under way, by path.
    std::unique_ptr<TreeFetch> fetched_;
    std::pair<AXElement, std::optional<int>> pressAction_; // Of the button looked at last.
};

} // namespace notch
