// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/AccessibilityScan.h"

#include "Native/Scan/Visibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace notch {
namespace {

constexpr std::array batch{ax::role, ax::title, ax::value, ax::description, ax::enabled, ax::hidden,
    ax::children, ax::position, ax::size};

std::optional<ScreenRect> rectOf(const AXValue& position, const AXValue& size)
{
    const auto* point = std::get_if<AXPoint>(&position);
    const auto* extent = std::get_if<AXSize>(&size);
    if (!point || !extent)
        return std::nullopt;
    const std::array numbers{point->x, point->y, extent->width, extent->height};
    if (!std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); }))
        return std::nullopt;
    return ScreenRect{point->x, point->y, extent->width, extent->height};
}

// A value that says that there are no children, as opposed to one that could not be read.
bool saysNone(const AXValue& children)
{
    const auto* error = std::get_if<AXError>(&children);
    return std::holds_alternative<AXNull>(children)
        || (error
            && (error->code == AXError::noValue || error->code == AXError::attributeUnsupported));
}

} // namespace

// The answers to one batch, by name.
struct AccessibilityScan::NodeValues {
    explicit NodeValues(std::vector<AXValue> answers)
        : values(std::move(answers))
    {
    }

    const std::string* role() const { return std::get_if<std::string>(&values[0]); }
    // Title, value and description; a text has no description of its own.
    std::span<AXValue> texts() { return {&values[1], *role() == role::staticText ? 2U : 3U}; }
    bool enabled() const
    {
        const auto* given = std::get_if<bool>(&values[4]);
        return given ? *given : *role() != role::button;
    }
    bool hidden() const
    {
        const auto* given = std::get_if<bool>(&values[5]);
        return given && *given;
    }
    const AXValue& children() const { return values[6]; }
    std::optional<ScreenRect> frame() const { return rectOf(values[7], values[8]); }

    std::vector<AXValue> values;
};

AccessibilityScan::AccessibilityScan(Accessibility& accessibility, const Clock& clock, AXRead& read)
    : accessibility_(accessibility)
    , clock_(clock)
    , read_(read)
{
}

bool AccessibilityScan::inBudget() const
{
    return read_.nodes < scan::nodeLimit && clock_.uptime() < read_.deadline;
}

bool AccessibilityScan::stillInBudget()
{
    if (!inBudget())
        read_.complete = false;
    return inBudget();
}

std::nullopt_t AccessibilityScan::incomplete()
{
    read_.complete = false;
    return std::nullopt;
}

std::optional<AXValue> AccessibilityScan::boundedAttribute(
    const AXElement& element, std::string_view name)
{
    if (!stillInBudget())
        return std::nullopt;
    auto value = accessibility_.attribute(element, name);
    if (!stillInBudget())
        return std::nullopt;
    return value;
}

std::vector<NativeApprovalNode> AccessibilityScan::readRoots(bool includingQuestions)
{
    const auto windows = windowsToScan(includingQuestions);
    std::vector<NativeApprovalNode> roots;
    if (!windows) {
        read_.complete = false;
        return roots;
    }
    for (const auto& window : *windows) {
        if (!stillInBudget())
            break;
        auto root = readWindow(window);
        if (!root) {
            read_.complete = false;
            continue;
        }
        roots.push_back(std::move(*root));
    }
    accessibility_.forget();
    read_.scannedRootCount = static_cast<int>(roots.size());
    stillInBudget();
    return roots;
}

std::optional<AXElements> AccessibilityScan::windowsToScan(bool includingQuestions)
{
    const auto application = accessibility_.application(read_.pid);
    if (!application || !inBudget())
        return std::nullopt;
    accessibility_.setManualAccessibility(*application);
    if (!inBudget())
        return std::nullopt;
    const auto listed = boundedAttribute(*application, ax::windows);
    const auto* windows = listed ? std::get_if<AXElements>(&*listed) : nullptr;
    if (!windows || windows->size() > scan::maxWindows)
        return std::nullopt;
    read_.primaryWindowCount = static_cast<int>(windows->size());
    if (!windows->empty())
        return *windows;
    return includingQuestions ? questionFallback(*application) : std::nullopt;
}

std::optional<AXElements> AccessibilityScan::questionFallback(const AXElement& application)
{
    const auto main = fallbackWindow(application, ax::mainWindow);
    const auto focused = fallbackWindow(application, ax::focusedWindow);
    if (!main || !focused)
        return std::nullopt;
    read_.agreedQuestionFallback = NativeScanCoverage::acceptsQuestionFallback({
        .primaryWindowCount = read_.primaryWindowCount,
        .targetPID = read_.pid,
        .mainPID = main->pid,
        .focusedPID = focused->pid,
        .mainIsWindow = true,
        .focusedIsWindow = true,
        .sameIdentity = main->element == focused->element,
        .withinBudget = inBudget(),
    });
    return read_.agreedQuestionFallback ? std::optional(AXElements{main->element}) : std::nullopt;
}

std::optional<AccessibilityScan::Fallback> AccessibilityScan::fallbackWindow(
    const AXElement& application, std::string_view attribute)
{
    const auto value = boundedAttribute(application, attribute);
    const auto* window = value ? std::get_if<AXElement>(&*value) : nullptr;
    if (!window || !stillInBudget())
        return std::nullopt;
    const auto pid = accessibility_.pidOf(*window);
    if (!pid || *pid != read_.pid)
        return std::nullopt;
    if (boundedAttribute(*window, ax::role) != AXValue(std::string(role::window)))
        return std::nullopt;
    return Fallback{*window, *pid};
}

std::optional<NativeApprovalNode> AccessibilityScan::readWindow(const AXElement& window)
{
    if (boundedAttribute(window, ax::minimized) != AXValue(false))
        return std::nullopt;
    const auto frame = frameOf(window);
    if (!frame || frame->isEmpty())
        return std::nullopt;
    accessibility_.prefetch(window, *frame, read_.deadline);
    auto root = readNode(window, 0, *frame);
    if (!root || read_.agreedQuestionFallback)
        return root;
    const auto title = boundedAttribute(window, ax::title);
    const auto* text = title ? std::get_if<std::string>(&*title) : nullptr;
    read_.windowTitles[root->id] = text ? *text : std::string(AXRead::untitledWindow);
    return root;
}

std::optional<ScreenRect> AccessibilityScan::frameOf(const AXElement& window)
{
    const auto position = boundedAttribute(window, ax::position);
    const auto size = boundedAttribute(window, ax::size);
    return position && size ? rectOf(*position, *size) : std::nullopt;
}

std::optional<NativeApprovalNode> AccessibilityScan::readNode(
    const AXElement& element, int depth, const ScreenRect& windowFrame)
{
    if (!inBudget() || depth > scan::maxDepth)
        return incomplete();
    if (std::ranges::find(ancestors_, element) != ancestors_.end())
        return incomplete(); // The tree contains itself.
    ++read_.nodes;
    auto values = readValues(element);
    if (!values)
        return incomplete();
    NativeApprovalNode node;
    if (!keepTexts(*values, node))
        return incomplete();
    node.id = "ax-" + std::to_string(read_.nodes);
    node.role = *values->role();
    node.enabled = values->enabled();
    node.frame = values->frame();
    node.visible = scan::shownInWindow(node.role, values->hidden(), node.frame, windowFrame);
    read_.elements.emplace(node.id, element);
    if (!scan::childrenAreRead(node.role, node.visible))
        return node;
    ancestors_.push_back(element);
    const bool read = readChildren(*values, depth, windowFrame, node);
    ancestors_.pop_back();
    return read ? std::optional(std::move(node)) : std::nullopt;
}

std::optional<AccessibilityScan::NodeValues> AccessibilityScan::readValues(const AXElement& element)
{
    if (!inBudget())
        return std::nullopt;
    auto answers = accessibility_.attributes(element, batch);
    if (!answers || answers->size() != batch.size() || !inBudget())
        return std::nullopt;
    NodeValues values(std::move(*answers));
    return values.role() ? std::optional(std::move(values)) : std::nullopt;
}

bool AccessibilityScan::keepTexts(NodeValues& values, NativeApprovalNode& node)
{
    for (auto& value : values.texts()) {
        auto* text = std::get_if<std::string>(&value);
        if (!text || text->empty())
            continue;
        read_.textBytes += text->size();
        if (text->size() > scan::maxTextBytes || read_.textBytes > scan::maxAllTextBytes)
            return false;
        node.texts.push_back(std::move(*text));
    }
    return true;
}

bool AccessibilityScan::readChildren(
    const NodeValues& values, int depth, const ScreenRect& windowFrame, NativeApprovalNode& node)
{
    const auto* children = std::get_if<AXElements>(&values.children());
    if (!children) {
        if (!saysNone(values.children()))
            read_.questionTreeComplete = false;
        return true;
    }
    for (const auto& child : *children) {
        auto read = readNode(child, depth + 1, windowFrame);
        if (!read)
            return false;
        node.children.push_back(std::move(*read));
    }
    return true;
}

} // namespace notch
