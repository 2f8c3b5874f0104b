// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TreeText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace notch {

// Changes of a card, written as one of
//
//   FROM => TO       in its text, at its first occurrence
//   before ID NODE, after ID NODE, in ID NODE, drop ID
//                    a new node before that one, after it, as its first child; without it
//   EDITS            of its nodes: see editNodes()
using Mutations = std::vector<std::string>;

inline bool isOfText(const std::string& mutation)
{
    static const std::regex form("^(before|after|in|drop) | => ");
    return std::regex_search(mutation, form);
}

inline std::string changedText(const std::string& text, const std::string& mutation)
{
    if (const auto arrow = mutation.find(" => "); arrow != mutation.npos) {
        const auto at = text.find(mutation.substr(0, arrow));
        return at == text.npos ? text : std::string(text).replace(at, arrow, mutation, arrow + 4);
    }
    std::istringstream words(mutation);
    std::string verb, id, node;
    std::getline(words >> verb >> id >> std::ws, node, '\0');
    const auto lines = verb == "before" ? "$1" + node + "\n$1$2"
                     : verb == "after"  ? "$1$2$1" + node + '\n'
                     : verb == "in"     ? "$1$2$1  " + node + '\n'
                                        : "";
    return std::regex_replace(text, std::regex("( *)(\\w+ #" + id + "\\b.*\n)"), lines,
        std::regex_constants::format_first_only);
}

// A mutation whose place an earlier one has taken away is left out.
inline std::vector<NativeApprovalNode> mutated(std::string text, const Mutations& mutations)
{
    std::string edits;
    for (const auto& mutation : mutations) {
        const auto changed = isOfText(mutation) ? changedText(text, mutation) : text;
        if (isOfText(mutation) && changed == text && mutation == mutations.front())
            throw std::invalid_argument(mutation);
        text = changed;
        edits += isOfText(mutation) ? "" : mutation + ' ';
    }
    auto roots = parseTree(text);
    editNodes(roots, edits);
    return roots;
}

inline Mutations joined(std::initializer_list<Mutations> lists)
{
    Mutations all;
    for (const auto& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

template <class Classify>
void expectMatches(
    const std::string& card, const Mutations& mutations, bool wanted, Classify classify)
{
    for (const auto& mutation : mutations)
        EXPECT_EQ(classify(mutated(card, {mutation})).has_value(), wanted) << mutation;
}

// Rows of a geometry table, each "RULE: EDITS" that bring a card to the rule's bound. The rule's
// name is not part of the change.
inline Mutations atBounds(Mutations rows)
{
    for (auto& row : rows)
        row.erase(0, row.find(": ") + 2);
    return rows;
}

// The card passes at each bound, and not half a point further in the last of the edits.
template <class Classify>
void expectBounds(const std::string& card, const Mutations& rows, Classify classify)
{
    for (const auto& bound : atBounds(rows)) {
        EXPECT_TRUE(classify(mutated(card, {bound}))) << bound;
        const auto last = bound.substr(bound.rfind(' ') + 1);
        const auto step = last.substr(0, last.find_first_of("+-") + 1) + "0.5";
        EXPECT_FALSE(classify(mutated(card, {bound, step}))) << bound << ", " << step;
    }
}

// No second change repairs what the first has spoilt, except for known ones: a text that takes a
// missing one's place, or the same frame.
template <class Classify>
void expectRefusedWith(const std::string& card, const Mutations& spoilt, const Mutations& others,
    const Mutations& cures, Classify classify)
{
    for (const auto& first : spoilt)
        for (const auto& second : others)
            EXPECT_TRUE(std::ranges::count(cures, second) > 0
                        || !classify(mutated(card, {first, second})).has_value())
                << first << " and " << second;
}

inline std::string times(std::size_t count, const std::string& line)
{
    std::string lines;
    for (std::size_t at = 0; at < count; ++at)
        lines += line;
    return lines;
}

// A chain of so many nodes, each in the one before.
inline std::string nested(std::size_t count, std::size_t indent, const std::string& node)
{
    std::string lines;
    for (std::size_t level = 0; level < count; ++level)
        lines += std::string(indent + 2 * level, ' ') + node + '\n';
    return lines;
}

} // namespace notch
