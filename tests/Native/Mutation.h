// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TreeText.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace notch {

// A card changed in one place: `from` becomes `to` in its text, then `frames` edits its frames.
struct Mutation {
    std::string name;
    std::string from;
    std::string to;
    std::string frames;
};

inline bool replaceIn(std::string& text, const Mutation& mutation)
{
    const auto at = text.find(mutation.from);
    if (at == text.npos)
        return false;
    text.replace(at, mutation.from.size(), mutation.to);
    return true;
}

inline std::vector<NativeApprovalNode> mutated(std::string text, const Mutation& mutation)
{
    if (!replaceIn(text, mutation))
        throw std::invalid_argument(mutation.name);
    auto roots = parseTree(text);
    editFrames(roots, mutation.frames);
    return roots;
}

// A frame rule at its bound, where the card still passes, and one step past it.
struct FrameRow {
    std::string name;
    std::string atBound;
    std::string step;
};

// Runs `check` on the card with each two of the mutations, and with each alone. A mutation whose
// place the other has taken away is left out.
template <class Check>
void forEachPair(const std::string& card, const std::vector<Mutation>& mutations, Check check)
{
    for (auto first = mutations.begin(); first != mutations.end(); ++first) {
        for (auto second = first; second != mutations.end(); ++second) {
            auto text = card;
            const bool one = replaceIn(text, *first);
            const bool two = second != first && replaceIn(text, *second);
            auto roots = parseTree(text);
            editFrames(roots, one ? first->frames : "");
            editFrames(roots, two ? second->frames : "");
            check(roots, first->name + " + " + second->name);
        }
    }
}

} // namespace notch
