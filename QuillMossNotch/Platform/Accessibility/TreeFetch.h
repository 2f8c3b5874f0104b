// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Time.h"
#include "Native/AXValue.h"
#include "Native/Tree/ScreenRect.h"
#include "Platform/Accessibility/AtspiNode.h"
#include "Platform/Accessibility/Bus.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <unordered_map>

namespace notch {

// Reads elements with many calls in flight, each of which has the time-out of one call. It asks
// first whether an element can be seen, then what is below it, as far down as the rules of the scan
// go. The first element that cannot be read ends the fetch, because no scan may lack one.
class TreeFetch {
public:
    // Borrowed; nothing else may be done with the connection while this runs.
    TreeFetch(sd_bus* bus, AtspiToolkit toolkit, Uptime deadline);
    ~TreeFetch();
    TreeFetch(const TreeFetch&) = delete;
    TreeFetch& operator=(const TreeFetch&) = delete;

    // Reads these elements alone.
    void fetch(const AXElements& elements, bool areTopLevel);
    // Reads a window with every element that can be seen in it.
    void fetchTree(const AXElement& window, const ScreenRect& frame);

    // Null: it was not asked for, or could not be read.
    const AtspiNode* find(const AXElement& element) const;

private:
    enum class Part : std::uint8_t { role, states, frame, name, children, text };
    struct Pending;
    struct Entry {
        AtspiNode node;
        const Entry* parent = nullptr;
        int unanswered = 0;
        bool isPartTwo = false; // What depends on role and states has been asked for.
    };

    void add(const AXElement& element, const Entry* parent, bool isTopLevel);
    void ask(Entry& entry, Part part);
    bool send(Pending& pending);
    bus::Message request(const AXElement& element, Part part) const;
    static int answered(sd_bus_message* reply, void* pending, sd_bus_error* error);
    void take(Entry& entry, Part part, sd_bus_message* reply);
    void advance(Entry& entry);
    void descend(Entry& entry);
    void run();
    void fail() { failed_ = true; }

    sd_bus* bus_;
    AtspiToolkit toolkit_;
    Uptime deadline_;
    std::optional<ScreenRect> windowFrame_; // Present: the fetch goes down from the elements.
    bool failed_ = false;
    // The sums over all elements. The fetch keeps no more than the rules of the scan would take.
    std::size_t textBytes_ = 0;
    std::size_t childCount_ = 0;
    std::unordered_map<AXElement, std::unique_ptr<Entry>, AXElementHash> entries_;
    std::deque<std::unique_ptr<Pending>> waiting_;
    std::unordered_map<Pending*, std::unique_ptr<Pending>> inFlight_;
};

} // namespace notch
