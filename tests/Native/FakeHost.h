// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Native/Accessibility.h"
#include "Native/HostApplications.h"
#include "Native/Mutation.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace notch {

// A host whose windows are a written tree, and the desktop around it. Every call is named, such as
// "AXWindows application", "attributes card" or "press allow"; a call may take time, fail, answer
// something else, or have something happen just before its answer.
struct FakeHost final : Accessibility, HostApplications, Clock {
    static constexpr std::int32_t pid = 7;

    explicit FakeHost(std::string_view given) { show(given); }

    void show(std::string_view given)
    {
        tree = given;
        windows = parseTree(tree);
        nodes.clear();
        for (const auto& window : windows)
            index(window);
    }

    // One thing that happens to the host:
    //
    //   front, hidden, ended, gone, twin, other pid, untrusted, no press
    //   fail CALL            no answer to it
    //   CALL takes SECONDS   longer than the others
    //   NAME ID = VALUE      an attribute: true, false, none, other, a negative number for an
    //                        error, #ID, [#ID], or a text
    //   FROM => TO, drop ID, …   in its tree (Mutation.h)
    //   at CALL: CHANGE      just before the answer to it
    void apply(const std::string& change)
    {
        const auto two = [&change](const std::string& mark) {
            const auto at = change.find(mark);
            return std::pair{change.substr(0, at), change.substr(at + mark.size())};
        };
        if (change.starts_with("at ")) {
            const auto [call, then] = two(": ");
            once(call.substr(3), [this, then = then] { apply(then); });
        } else if (isOfText(change)) {
            show(changedText(tree, change));
        } else if (change.find(" = ") != change.npos) {
            const auto [what, given] = two(" = ");
            odd[what] = valueOf(given);
        } else if (change.find(" takes ") != change.npos) {
            const auto [call, seconds] = two(" takes ");
            once(call, [this, seconds = seconds] { time += std::stod(seconds); });
        } else if (change.starts_with("fail ")) {
            failing.insert(change.substr(5));
        } else {
            happen(change);
        }
    }
    // Lets the host list no window, and call this one both main and focused.
    void fallBackTo(const std::string& id)
    {
        for (const auto& change : {std::string("AXWindows application = []"),
                 "AXMainWindow application = #" + id, "AXFocusedWindow application = #" + id})
            apply(change);
    }
    // Runs just before the first answer to that call.
    void once(const std::string& call, std::function<void()> work)
    {
        before = [this, call, work = std::move(work)](const std::string& made) {
            if (made != call)
                return;
            const auto now = work;
            before = {};
            now();
        };
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
    std::function<void(const std::string& word)> otherwise; // For any other thing that happens.
    std::vector<std::string> pressed; // By id.
    mutable std::vector<std::string> calls;

private:
    void happen(const std::string& word)
    {
        if (word == "gone")
            hosts.clear();
        else if (word == "twin")
            hosts.push_back({.pid = pid + 1});
        else if (word == "untrusted")
            trusted = false;
        else if (word == "other pid")
            ++hosts.at(0).pid;
        else if (word == "front")
            hosts.at(0).isActive = true;
        else if (word == "hidden")
            hosts.at(0).isHidden = true;
        else if (word == "ended")
            hosts.at(0).isTerminated = true;
        else if (word == "no press")
            actions = {"AXShowMenu"};
        else if (otherwise)
            otherwise(word);
        else
            throw std::invalid_argument(word);
    }
    static AXValue valueOf(const std::string& text)
    {
        if (text.starts_with('['))
            return text == "[]" ? AXElements{}
                                : AXElements{element(text.substr(2, text.size() - 3))};
        if (text.starts_with('#'))
            return element(text.substr(1));
        if (text.starts_with('-'))
            return AXError{std::stoi(text)};
        const std::map<std::string, AXValue> words{
            {"true", true}, {"false", false}, {"none", AXNull{}}, {"other", AXOther{}}};
        const auto word = words.find(text);
        return word == words.end() ? AXValue(text) : word->second;
    }
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

    std::string tree;
    std::vector<NativeApprovalNode> windows;
    std::map<std::string, const NativeApprovalNode*> nodes;
};

} // namespace notch
