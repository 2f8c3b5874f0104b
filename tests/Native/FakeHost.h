// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Accessibility.h"
#include "Native/HostApplications.h"
#include "support/TreeText.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// A host whose windows are a written tree, and the desktop around it. Every call is named, such as
// "AXWindows application", "attributes card" or "press allow"; a call may take time, fail, answer
// something else, or have something happen just before its answer.
struct FakeHost final : Accessibility, HostApplications, Clock {
    static constexpr std::int32_t pid = 7;

    explicit FakeHost(std::string_view tree) { show(tree); }

    void show(std::string_view tree, const std::string& edits = {})
    {
        windows = parseTree(tree);
        editNodes(windows, edits);
        nodes.clear();
        for (const auto& window : windows)
            index(window);
    }

    Date now() const override { return {1000 + time}; }
    Uptime uptime() const override { return {time}; }
    std::vector<HostApplication> running() const override
    {
        answers("running");
        return hosts;
    }
    bool isProcessTrusted() override { return answers("trusted") && trusted; }
    std::optional<AXElement> application(std::int32_t) override
    {
        return answers("application") ? std::optional(element("application")) : std::nullopt;
    }
    void setManualAccessibility(const AXElement&) override { answers("manual"); }
    std::optional<AXValue> attribute(const AXElement& of, std::string_view name) override
    {
        const auto call = std::string(name) + ' ' + of.path;
        return answers(call) ? std::optional(value(of, name)) : std::nullopt;
    }
    std::optional<std::vector<AXValue>> attributes(
        const AXElement& of, std::span<const std::string_view> names) override
    {
        if (!answers("attributes " + of.path) || !nodes.contains(of.path))
            return std::nullopt;
        std::vector<AXValue> values;
        for (const auto name : names)
            values.push_back(value(of, name));
        return values;
    }
    std::optional<std::int32_t> pidOf(const AXElement& of) override
    {
        return answers("pid " + of.path) ? std::optional(pid) : std::nullopt;
    }
    std::optional<std::vector<std::string>> actionNames(const AXElement& of) override
    {
        return answers("actions " + of.path) ? std::optional(actions) : std::nullopt;
    }
    bool press(const AXElement& of) override
    {
        const bool delivered = answers("press " + of.path);
        if (delivered)
            pressed.push_back(of.path);
        return delivered;
    }
    void prefetch(const AXElement&, const ScreenRect&, Uptime) override { }
    void forget() override { }

    double time = 100;
    double callTime = 0; // Of each call, in seconds.
    bool trusted = true;
    std::vector<HostApplication> hosts{{.pid = pid}};
    std::vector<std::string> actions{"AXPress"};
    std::map<std::string, AXValue> odd; // By "NAME ID": what is answered instead.
    std::set<std::string> failing; // Calls without an answer.
    std::function<void(const std::string& call)> before; // Each answer.
    std::vector<std::string> pressed; // Ids.
    mutable std::vector<std::string> calls;

private:
    static AXElement element(const std::string& id) { return {"host", id}; }
    static AXElements elements(const std::vector<NativeApprovalNode>& list)
    {
        AXElements made;
        for (const auto& node : list)
            made.push_back(element(node.id));
        return made;
    }
    void index(const NativeApprovalNode& node)
    {
        nodes[node.id] = &node;
        for (const auto& child : node.children)
            index(child);
    }
    bool answers(const std::string& call) const
    {
        calls.push_back(call);
        const_cast<FakeHost*>(this)->time += callTime;
        if (before)
            before(call);
        return !failing.contains(call);
    }
    AXValue value(const AXElement& of, std::string_view name) const
    {
        if (const auto it = odd.find(std::string(name) + ' ' + of.path); it != odd.end())
            return it->second;
        if (name == ax::windows)
            return elements(windows);
        const auto it = nodes.find(of.path);
        if (it == nodes.end())
            return AXError{};
        const auto& node = *it->second;
        const std::map<std::string_view, AXValue> values{{ax::role, node.role},
            {ax::title, text(node, 0)}, {ax::value, text(node, 1)},
            {ax::description, text(node, 2)}, {ax::enabled, node.enabled},
            {ax::hidden, !node.visible}, {ax::minimized, false},
            {ax::children, elements(node.children)},
            {ax::position, node.frame ? AXValue(AXPoint{node.frame->x, node.frame->y}) : AXError{}},
            {ax::size,
                node.frame ? AXValue(AXSize{node.frame->width, node.frame->height}) : AXError{}}};
        return values.at(name);
    }
    static AXValue text(const NativeApprovalNode& node, std::size_t at)
    {
        return at < node.texts.size() ? AXValue(node.texts[at]) : AXNull{};
    }

    std::vector<NativeApprovalNode> windows;
    std::map<std::string, const NativeApprovalNode*> nodes;
};

} // namespace notch
