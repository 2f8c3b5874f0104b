// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Platform/Accessibility/FrameMatching.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace notch {
namespace {

using Matches = std::function<bool(const SeenWindow&, const SeenWindow&)>;

// Both sides may round to whole pixels.
constexpr double rounding = 1.5;

bool sameTitle(const SeenWindow& a, const SeenWindow& b)
{
    return !a.title.empty() && a.title == b.title;
}

bool samePlace(const SeenWindow& a, const SeenWindow& b)
{
    const auto near = [](double x, double y) { return std::abs(x - y) <= rounding; };
    return a.frame && b.frame && near(a.frame->x, b.frame->x) && near(a.frame->y, b.frame->y)
        && near(a.frame->width, b.frame->width) && near(a.frame->height, b.frame->height);
}

// The windows and frames that are not paired yet.
struct Unpaired {
    const std::vector<SeenWindow>& windows;
    const std::vector<SeenWindow>& frames;
    std::vector<std::optional<std::size_t>> frameOf; // By window.

    bool isFree(std::size_t frame) const
    {
        return std::ranges::find(frameOf, std::optional(frame)) == frameOf.end();
    }
    // Pairs what is alike on both sides just once.
    void pair(const Matches& alike)
    {
        auto paired = frameOf;
        for (std::size_t w = 0; w < windows.size(); ++w)
            if (!frameOf[w])
                if (const auto frame = onlyFrame(w, alike); frame && onlyWindow(*frame, alike))
                    paired[w] = frame;
        frameOf = paired;
    }

private:
    std::optional<std::size_t> onlyFrame(std::size_t window, const Matches& alike) const
    {
        std::optional<std::size_t> only;
        for (std::size_t f = 0; f < frames.size(); ++f) {
            if (!isFree(f) || !alike(windows[window], frames[f]))
                continue;
            if (only)
                return std::nullopt;
            only = f;
        }
        return only;
    }
    bool onlyWindow(std::size_t frame, const Matches& alike) const
    {
        int count = 0;
        for (std::size_t w = 0; w < windows.size(); ++w)
            count += !frameOf[w] && alike(windows[w], frames[frame]) ? 1 : 0;
        return count == 1;
    }
};

} // namespace

std::optional<std::vector<std::size_t>> matchFrames(
    const std::vector<SeenWindow>& windows, const std::vector<SeenWindow>& frames)
{
    Unpaired sides{windows, frames, std::vector<std::optional<std::size_t>>(windows.size())};
    sides.pair(sameTitle);
    sides.pair(samePlace);
    sides.pair([](const auto&, const auto&) { return true; });
    std::vector<std::size_t> matched;
    for (const auto& frame : sides.frameOf) {
        if (!frame)
            return std::nullopt;
        matched.push_back(*frame);
    }
    return matched;
}

} // namespace notch
