// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/TreeFetch.h"

#include "Native/Accessibility.h"
#include "Native/Scan/ScanLimits.h"
#include "Native/Scan/Visibility.h"

#include <algorithm>
#include <utility>

namespace notch {
namespace {

constexpr std::size_t maxInFlight = 128; // With more the queue itself meets the time-out.
constexpr std::uint32_t screenCoordinates = 0;
constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto properties = "org.freedesktop.DBus.Properties";

// The element has no such interface, as opposed to not answering.
bool saysUnsupported(sd_bus_message* reply)
{
    return sd_bus_message_is_method_error(reply, "org.freedesktop.DBus.Error.UnknownInterface") > 0
        || sd_bus_message_is_method_error(reply, "org.freedesktop.DBus.Error.UnknownMethod") > 0;
}

} // namespace

struct TreeFetch::Pending {
    TreeFetch* fetch = nullptr;
    Entry* entry = nullptr;
    Part part = Part::role;
    bus::Slot slot;
};

TreeFetch::TreeFetch(sd_bus* bus, AtspiToolkit toolkit, Uptime deadline)
    : bus_(bus)
    , toolkit_(toolkit)
    , deadline_(deadline)
{
}

TreeFetch::~TreeFetch() = default;

void TreeFetch::fetch(const AXElements& elements, bool areTopLevel)
{
    for (const auto& element : elements)
        add(element, nullptr, areTopLevel);
    run();
}

void TreeFetch::fetchTree(const AXElement& window, const ScreenRect& frame)
{
    windowFrame_ = frame;
    add(window, nullptr, true);
    run();
}

const AtspiNode* TreeFetch::find(const AXElement& element) const
{
    const auto found = entries_.find(element);
    const bool isRead = found != entries_.end() && !found->second->node.failed
                     && found->second->isPartTwo && found->second->unanswered == 0;
    return isRead ? &found->second->node : nullptr;
}

void TreeFetch::add(const AXElement& element, const Entry* parent, bool isTopLevel)
{
    if (entries_.size() >= scan::nodeLimit || entries_.contains(element))
        return; // One element in two places is read once.
    auto entry = std::make_unique<Entry>();
    entry->node.element = element;
    entry->node.toolkit = toolkit_;
    entry->node.isTopLevel = isTopLevel;
    entry->node.depth = parent ? parent->node.depth + 1 : 0;
    entry->parent = parent;
    for (const auto part : {Part::role, Part::states, Part::frame, Part::name})
        ask(*entry, part);
    entries_.emplace(element, std::move(entry));
}

void TreeFetch::ask(Entry& entry, Part part)
{
    ++entry.unanswered;
    auto pending = std::make_unique<Pending>();
    pending->fetch = this;
    pending->entry = &entry;
    pending->part = part;
    waiting_.push_back(std::move(pending));
}

bus::Message TreeFetch::request(const AXElement& element, Part part) const
{
    const bus::Object object{element.owner, element.path};
    switch (part) {
    case Part::role:
        return bus::request(bus_, object, accessible, "GetRole");
    case Part::states:
        return bus::request(bus_, object, accessible, "GetState");
    case Part::frame:
        return bus::request(
            bus_, object, "org.a11y.atspi.Component", "GetExtents", "u", screenCoordinates);
    case Part::name: // One property: asking a Qt 6.4 program for all of them ends it.
        return bus::request(bus_, object, properties, "Get", "ss", accessible, "Name");
    case Part::children:
        return bus::request(bus_, object, accessible, "GetChildren");
    case Part::text:
        return bus::request(bus_, object, "org.a11y.atspi.Text", "GetText", "ii", 0, -1);
    }
    return {};
}

bool TreeFetch::send(Pending& pending)
{
    const auto message = request(pending.entry->node.element, pending.part);
    sd_bus_slot* slot = nullptr;
    if (!message
        || sd_bus_call_async(bus_, &slot, message.get(), &TreeFetch::answered, &pending,
               bus::microseconds(Accessibility::callTimeout))
               < 0)
        return false;
    pending.slot.reset(slot);
    return true;
}

int TreeFetch::answered(sd_bus_message* reply, void* pending, sd_bus_error*)
{
    auto& answered = *static_cast<Pending*>(pending);
    auto& fetch = *answered.fetch;
    const auto owned = std::move(fetch.inFlight_.extract(&answered).mapped());
    fetch.take(*owned->entry, owned->part, reply);
    return 0;
}

void TreeFetch::take(Entry& entry, Part part, sd_bus_message* reply)
{
    --entry.unanswered;
    auto& node = entry.node;
    const bool isError = sd_bus_message_is_method_error(reply, nullptr) > 0;
    const bus::Message answer(isError ? nullptr : sd_bus_message_ref(reply));
    switch (part) {
    case Part::role:
        node.takeRole(answer);
        break;
    case Part::states:
        node.takeStates(answer);
        break;
    case Part::frame:
        node.takeFrame(answer, isError && saysUnsupported(reply));
        break;
    case Part::name:
        node.takeName(answer);
        textBytes_ += node.name.size();
        break;
    case Part::children:
        node.takeChildren(answer);
        childCount_ += node.children.size();
        break;
    case Part::text:
        node.takeText(answer);
        textBytes_ += node.text.value_or("").size();
        break;
    }
    const bool isTooMuch =
        textBytes_ > scan::maxAllTextBytes + scan::maxTextBytes || childCount_ > scan::nodeLimit;
    if (node.failed || isTooMuch)
        fail();
    else if (entry.unanswered == 0)
        advance(entry);
}

// Everything that was asked of the element has been answered.
void TreeFetch::advance(Entry& entry)
{
    auto& node = entry.node;
    if (entry.isPartTwo) {
        descend(entry);
        return;
    }
    entry.isPartTwo = true;
    if (entry.parent)
        node.rescale(entry.parent->node);
    const bool visible =
        windowFrame_
        && scan::shownInWindow(node.roleName(), node.isHidden(), node.frame, *windowFrame_);
    if (atspi::isTextOrGroup(node.role)
        || (windowFrame_ && scan::childrenAreRead(node.roleName(), visible)))
        ask(entry, Part::children);
    if (node.states.isEditable())
        ask(entry, Part::text);
}

void TreeFetch::descend(Entry& entry)
{
    const auto& node = entry.node;
    if (!windowFrame_ || node.depth >= scan::maxDepth)
        return;
    const auto role = node.roleName();
    if (!scan::childrenAreRead(
            role, scan::shownInWindow(role, node.isHidden(), node.frame, *windowFrame_)))
        return;
    for (const auto& child : node.children) {
        if (child.owner != node.element.owner || child.path.ends_with("/null"))
            fail(); // Another program's, or not made yet.
        else
            add(child, &entry, false);
    }
}

void TreeFetch::run()
{
    while (!failed_ && (!waiting_.empty() || !inFlight_.empty())) {
        const auto left = deadline_ - Uptime::now();
        if (left <= Seconds{0})
            return fail();
        while (!waiting_.empty() && inFlight_.size() < maxInFlight) {
            auto* const pending = waiting_.front().get();
            inFlight_.emplace(pending, std::move(waiting_.front()));
            waiting_.pop_front();
            if (!send(*pending))
                return fail();
        }
        const int processed = sd_bus_process(bus_, nullptr);
        if (processed < 0)
            return fail();
        if (processed == 0)
            sd_bus_wait(bus_, bus::microseconds(std::min(left, Accessibility::callTimeout)));
    }
}

} // namespace notch
