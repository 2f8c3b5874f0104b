// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/AtspiAccessibility.h"

#include "Platform/Accessibility/FrameMatching.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace notch {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto application = "org.a11y.atspi.Application";
constexpr auto action = "org.a11y.atspi.Action";
constexpr auto properties = "org.freedesktop.DBus.Properties";
constexpr int maxActions = 16;
constexpr int mostStale = 512; // Messages; far more than the answers that a scan gives up.

const AXElement registry{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};

bus::Object object(const AXElement& element)
{
    return {element.owner, element.path};
}

// The toolkits' names for a click; what GetActions answers may be blank or translated.
bool presses(std::string name)
{
    std::ranges::transform(
        name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    constexpr std::array known{"press", "click", "activate", "dodefault"};
    return std::ranges::find(known, name) != known.end();
}

SeenWindow seen(const AtspiNode& frame)
{
    return {frame.name, frame.frame};
}

} // namespace

AtspiAccessibility::AtspiAccessibility(const RunningApplications& applications)
    : applications_(applications)
{
}

bool AtspiAccessibility::connect()
{
    if (!bus::isOpen(connection_)) {
        const auto address = trust_.address();
        connection_ = address ? bus::at(*address) : bus::Connection();
        pids_.clear();
        toolkits_.clear();
    }
    return bus::isOpen(connection_);
}

bool AtspiAccessibility::isProcessTrusted()
{
    const bool isEnabled = trust_.isProcessTrusted();
    isUnreachable_ = isEnabled && !connect();
    return isEnabled && !isUnreachable_;
}

bus::Message AtspiAccessibility::call(
    const AXElement& element, const char* interface, const char* method)
{
    auto* const bus = connection_.get();
    return bus::call(bus, bus::request(bus, object(element), interface, method), callTimeout);
}

bus::Message AtspiAccessibility::callProperty(
    const AXElement& element, const char* interface, const char* property)
{
    auto* const bus = connection_.get();
    return bus::call(bus,
        bus::request(bus, object(element), properties, "Get", "ss", interface, property),
        callTimeout);
}

std::optional<AXElements> AtspiAccessibility::children(const AXElement& element)
{
    AtspiNode node;
    node.takeChildren(call(element, accessible, "GetChildren"));
    return node.failed ? std::nullopt : std::optional(std::move(node.children));
}

// Answers that came too late, and whatever else has come meanwhile. False: there is no end of them.
bool AtspiAccessibility::dropStale()
{
    for (int i = 0; i < mostStale; ++i)
        if (!connection_ || sd_bus_process(connection_.get(), nullptr) <= 0)
            return true;
    return false;
}

std::optional<AXElement> AtspiAccessibility::application(std::int32_t pid)
{
    if (!dropStale()) {
        connection_.reset(); // Whoever floods it does not know the next one's name.
        return std::nullopt;
    }
    const auto programs = children(registry);
    if (!programs)
        return std::nullopt;
    std::optional<AXElement> found;
    const auto deadline = Uptime::now() + callTimeout; // What it has learned by then stays.
    for (const auto& program : *programs) {
        if (Uptime::now() > deadline)
            return std::nullopt;
        if (pidOf(program) != pid)
            continue;
        if (found)
            return std::nullopt; // It is not known which of them has the windows.
        found = program;
    }
    target_ = pid;
    return found;
}

std::optional<std::int32_t> AtspiAccessibility::pidOf(const AXElement& element)
{
    if (const auto known = pids_.find(element.owner); known != pids_.end())
        return known->second;
    auto* const bus = connection_.get();
    const bus::Object daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
    const auto reply = bus::call(bus,
        bus::request(bus, daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID", "s",
            element.owner.c_str()),
        callTimeout);
    std::uint32_t pid = 0;
    if (!reply || sd_bus_message_read(reply.get(), "u", &pid) <= 0)
        return std::nullopt;
    return pids_[element.owner] = static_cast<std::int32_t>(pid);
}

void AtspiAccessibility::setManualAccessibility(const AXElement& application)
{
    const auto asked =
        bus::request(connection_.get(), object(application), accessible, "GetAttributes");
    if (asked && sd_bus_message_set_expect_reply(asked.get(), 0) >= 0)
        sd_bus_send(connection_.get(), asked.get(), nullptr);
}

bool AtspiAccessibility::meet(const AXElement& program)
{
    if (toolkits_.contains(program.owner))
        return true;
    const auto name = bus::propertyText(callProperty(program, notch::application, "ToolkitName"));
    const auto version = bus::propertyText(callProperty(program, notch::application, "Version"));
    if (name)
        toolkits_[program.owner] = {
            .isGtk4 = *name == "GTK" && version.value_or("").starts_with("4."),
            .isChromium = *name == "Chromium",
        };
    return false;
}

std::optional<AXElements> AtspiAccessibility::windows(const AXElement& application)
{
    frames_.clear();
    if (!meet(application) || !target_)
        return std::nullopt;
    auto listed = children(application);
    if (!listed)
        return std::nullopt;
    TreeFetch looks(connection_.get(), toolkits_[application.owner], Uptime::now() + callTimeout);
    looks.fetch(*listed, true);
    std::vector<SeenWindow> managed, frames;
    AXElements elements;
    for (const auto& element : *listed) {
        const auto* node = looks.find(element);
        if (!node || element.owner != application.owner)
            return std::nullopt;
        if (!atspi::isWindow(node->role))
            continue;
        frames.push_back(seen(*node));
        elements.push_back(element);
        frames_[element.path] = {*node, node->states.isIconified()};
    }
    const auto windows = applications_.windows(*target_);
    for (const auto& window : windows)
        managed.push_back({window.title, window.frame});
    const auto matched = matchFrames(managed, frames);
    if (!matched)
        return std::nullopt;
    AXElements found;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        found.push_back(elements[(*matched)[i]]);
        frames_[found.back().path].isMinimized |= windows[i].isMinimized;
    }
    return found;
}

std::optional<AtspiNode> AtspiAccessibility::look(const AXElement& element)
{
    TreeFetch look(connection_.get(), toolkits_[element.owner], Uptime::now() + callTimeout);
    look.fetch({element}, false);
    const auto* node = look.find(element);
    return node ? std::optional(*node) : std::nullopt;
}

std::optional<AXValue> AtspiAccessibility::attribute(
    const AXElement& element, std::string_view name)
{
    if (name == ax::windows) {
        auto found = windows(element);
        return found ? std::optional(AXValue(std::move(*found))) : std::nullopt;
    }
    if (name == ax::mainWindow || name == ax::focusedWindow)
        return std::nullopt; // Nothing here says which they are.
    const auto frame = frames_.find(element.path);
    if (frame != frames_.end())
        return name == ax::minimized ? frame->second.isMinimized : frame->second.node.value(name);
    const auto node = look(element);
    return node ? std::optional(node->value(name)) : std::nullopt;
}

std::optional<std::vector<AXValue>> AtspiAccessibility::attributes(
    const AXElement& element, std::span<const std::string_view> names)
{
    const auto looked = fetched_ ? std::nullopt : look(element);
    const auto* const node = fetched_ ? fetched_->find(element) : looked ? &*looked : nullptr;
    if (!node)
        return std::nullopt;
    std::vector<AXValue> values;
    for (const auto name : names)
        values.push_back(node->value(name));
    return values;
}

void AtspiAccessibility::prefetch(const AXElement& window, const ScreenRect& frame, Uptime deadline)
{
    fetched_ = std::make_unique<TreeFetch>(connection_.get(), toolkits_[window.owner], deadline);
    fetched_->fetchTree(window, frame);
}

void AtspiAccessibility::forget()
{
    fetched_.reset();
    frames_.clear();
}

std::optional<int> AtspiAccessibility::pressAction(const AXElement& element)
{
    const auto deadline = Uptime::now() + callTimeout; // Of all names together.
    const auto reply = callProperty(element, action, "NActions");
    int count = 0;
    if (!reply || sd_bus_message_read(reply.get(), "v", "i", &count) <= 0)
        return std::nullopt;
    auto* const bus = connection_.get();
    for (int index = 0; index < std::min(count, maxActions); ++index) {
        const auto name = bus::text(
            bus::call(bus, bus::request(bus, object(element), action, "GetName", "i", index),
                deadline - Uptime::now()));
        if (!name)
            return std::nullopt;
        if (presses(*name))
            return index;
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> AtspiAccessibility::actionNames(const AXElement& element)
{
    const auto index = pressAction(element);
    if (!index)
        return std::nullopt;
    pressAction_ = {element, *index};
    return std::vector{std::string(ax::press)};
}

bool AtspiAccessibility::press(const AXElement& element)
{
    const auto known = std::exchange(pressAction_, {});
    const auto index = known.first == element ? known.second : pressAction(element);
    auto* const bus = connection_.get();
    int delivered = 0;
    const auto reply =
        !index ? bus::Message()
               : bus::call(bus, bus::request(bus, object(element), action, "DoAction", "i", *index),
                   callTimeout);
    return reply && sd_bus_message_read(reply.get(), "b", &delivered) > 0 && delivered != 0;
}

} // namespace notch
