// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Oracle.h"

#include <algorithm>
#include <cmath>

namespace notch::oracle {

std::size_t blankAt(std::string_view rest)
{
    for (const std::string_view blank : {" ", "\t", "\n", "\v", "\f", "\r", "\u0085", "\u00A0",
             "\u2003", "\u2028", "\u2029", "\u3000"}) {
        if (rest.starts_with(blank))
            return blank.size();
    }
    return 0;
}

std::string trim(std::string_view text)
{
    while (const auto size = blankAt(text))
        text.remove_prefix(size);
    auto end = text.size();
    for (std::size_t at = 0; at < text.size();) {
        const auto size = blankAt(text.substr(at));
        at += size ? size : 1;
        end = size ? end : at;
    }
    return std::string(text.substr(0, end));
}

std::vector<std::string> distinct(const std::vector<std::string>& texts)
{
    std::vector<std::string> found;
    for (const auto& text : texts) {
        if (!text.empty() && std::ranges::find(found, text) == found.end())
            found.push_back(text);
    }
    return found;
}

bool usable(const std::optional<ScreenRect>& frame)
{
    return frame && std::isfinite(frame->x) && std::isfinite(frame->y)
        && std::isfinite(frame->width) && std::isfinite(frame->height)
        && std::isfinite(frame->x + frame->width) && std::isfinite(frame->y + frame->height)
        && frame->width > 0 && frame->height > 0;
}

bool contains(const ScreenRect& outer, const ScreenRect& inner, double grown)
{
    return inner.x >= outer.x - grown && inner.y >= outer.y - grown
        && inner.x + inner.width <= outer.x + outer.width + grown
        && inner.y + inner.height <= outer.y + outer.height + grown;
}

void flatten(const NativeApprovalNode& node, Nodes& into)
{
    into.push_back(&node);
    for (const auto& child : node.children)
        flatten(child, into);
}

namespace {

const std::string allow = "允许本次删除", deny = "取消删除";
const std::string risk = "高风险命令，可能影响系统稳定性";

bool unsafe(std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 && c != '\t' && c != '\n' && c != '\r') || byte == 0x7F)
            return true;
    }
    for (const std::string_view bad :
        {"\u0085", "\u00AD", "\u200B", "\u200D", "\u202E", "\uFEFF"}) {
        if (text.find(bad) != text.npos)
            return true;
    }
    return false;
}

bool eat(std::string_view& rest, std::string_view part)
{
    if (!rest.starts_with(part))
        return false;
    rest.remove_prefix(part.size());
    return true;
}

bool eatOne(std::string_view& rest, const std::vector<std::string_view>& parts)
{
    return std::ranges::any_of(parts, [&](std::string_view part) { return eat(rest, part); });
}

void eatBlanks(std::string_view& rest)
{
    while (const auto size = blankAt(rest))
        rest.remove_prefix(size);
}

std::string labelOf(const std::string& text)
{
    const auto trimmed = trim(text);
    for (const auto& [number, label] : {std::pair{"1", allow}, std::pair{"2", deny}}) {
        std::string_view rest = trimmed;
        if (eat(rest, number)) {
            for (bool more = true; more;) {
                eatBlanks(rest);
                more = eatOne(rest, {".", "、", "：", ":"});
            }
        }
        if (rest == label && !unsafe(text))
            return label;
    }
    return "";
}

std::vector<std::string> staticTexts(const NativeApprovalNode& node, bool skippingButtons)
{
    if (skippingButtons && node.role == "AXButton")
        return {};
    std::vector<std::string> texts;
    if (node.role == "AXStaticText") {
        for (const auto& text : distinct(node.texts)) {
            if (!trim(text).empty())
                texts.push_back(text);
        }
        std::ranges::sort(texts);
        return texts;
    }
    for (const auto& child : node.children)
        std::ranges::copy(staticTexts(child, skippingButtons), std::back_inserter(texts));
    return texts;
}

void staticTextNodes(const NativeApprovalNode& node, std::vector<std::string>& ids)
{
    if (node.role == "AXStaticText" && !staticTexts(node, true).empty())
        ids.push_back(node.id);
    if (node.role == "AXStaticText" || node.role == "AXButton")
        return;
    for (const auto& child : node.children)
        staticTextNodes(child, ids);
}

std::string buttonLabel(const NativeApprovalNode& node)
{
    const auto own = distinct(node.texts);
    if (own.empty()) {
        std::string joined;
        for (const auto& text : staticTexts(node, false))
            joined += (joined.empty() ? "" : " ") + text;
        return labelOf(joined);
    }
    const auto label = labelOf(own[0]);
    return std::ranges::all_of(own, [&](const auto& text) { return labelOf(text) == label; })
             ? label
             : "";
}

std::size_t depth(const NativeApprovalNode& node)
{
    std::size_t deepest = 0;
    for (const auto& child : node.children)
        deepest = std::max(deepest, depth(child));
    return deepest + 1;
}

std::optional<long double> count(std::string_view& rest)
{
    std::string digits;
    for (; !rest.empty() && rest[0] >= '0' && rest[0] <= '9'; rest.remove_prefix(1))
        digits += rest[0];
    if (digits.empty() || digits[0] == '0' || std::stold(digits) > 9223372036854775807.0L)
        return std::nullopt;
    return std::stold(digits);
}

bool isSummary(std::string_view rest)
{
    if (!eat(rest, "检测到批量删除操作") || !eatOne(rest, {"：", ":"}))
        return false;
    eatBlanks(rest);
    if (!eat(rest, "累计删除数量"))
        return false;
    eatBlanks(rest);
    const auto total = count(rest);
    eatBlanks(rest);
    if (!total || !eat(rest, "项") || !eatOne(rest, {"，", ","}))
        return false;
    eatBlanks(rest);
    if (!eat(rest, "阈值"))
        return false;
    eatBlanks(rest);
    const auto threshold = count(rest);
    return threshold && *total >= *threshold && (rest.empty() || rest == "\n");
}

bool isComplete(const std::string& text)
{
    return !trim(text).empty() && text.size() <= 65536 && text.find("…") == text.npos
        && text.find("...") == text.npos && text.find("⋯") == text.npos && !unsafe(text);
}

bool allVisible(const Nodes& nodes)
{
    return std::ranges::all_of(nodes, [](const auto* node) { return node->visible; });
}

auto buttonCount(const Nodes& nodes)
{
    return std::ranges::count_if(nodes, [](const auto* node) { return node->role == "AXButton"; });
}

struct Found {
    Nodes path;
    std::string label;
};

void collect(const NativeApprovalNode& node, Nodes path, std::vector<Found>& found)
{
    if (!node.visible)
        return;
    path.push_back(&node);
    if (node.role == "AXButton" && !buttonLabel(node).empty())
        found.push_back({path, buttonLabel(node)});
    for (const auto& child : node.children)
        collect(child, path, found);
}

std::optional<NativeApprovalMatch> grouped(
    const NativeApprovalNode& group, NativeApprovalMatch match)
{
    Nodes flat;
    flatten(group, flat);
    if (group.role != "AXGroup" || flat.size() > 90 || depth(group) > 12 || buttonCount(flat) != 2
        || !allVisible(flat))
        return std::nullopt;
    std::vector<std::string> titles, risks, commands;
    for (const auto& text : staticTexts(group, true))
        (isSummary(text) ? titles : text == risk ? risks : commands).push_back(text);
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1 || !isComplete(commands[0]))
        return std::nullopt;
    match.containerID = group.id;
    staticTextNodes(group, match.contextNodeIDs);
    match.context = {titles[0], risk, commands[0], allow, deny};
    return match;
}

const NativeApprovalNode* unwrap(const NativeApprovalNode& node)
{
    if (!node.visible || !node.enabled)
        return nullptr;
    if (node.role == "AXStaticText")
        return node.children.empty() ? &node : nullptr;
    if (node.role != "AXGroup" || !node.texts.empty() || node.children.size() != 1)
        return nullptr;
    const auto& child = node.children[0];
    const bool plain = child.role == "AXStaticText" && child.children.empty() && child.visible
                    && child.enabled && usable(node.frame) && usable(child.frame);
    return plain && contains(*node.frame, *child.frame, 2) ? &child : nullptr;
}

bool geometry(const Nodes& nodes)
{
    if (!std::ranges::all_of(nodes, [](const auto* node) { return usable(node->frame); }))
        return false;
    const auto &T = *nodes[0]->frame, &K = *nodes[1]->frame, &C = *nodes[2]->frame,
               &A = *nodes[3]->frame, &D = *nodes[4]->frame;
    const auto H = A.height, foot = std::max(T.maxY(), K.maxY());
    return !(H < 12 || H > 128 || std::abs(A.x - D.x) > 2 || std::abs(A.width - D.width) > 2
             || std::abs(A.height - D.height) > 2 || A.maxY() - 1 > D.y || D.y - A.maxY() > H
             || D.y - A.maxY() > 24 || std::abs(T.x - C.x) > H || A.x - 2 > C.x || C.x > A.x + H
             || T.x - 2 > K.x || K.x >= A.maxX() || T.y - 2 > K.y || K.y >= T.maxY()
             || T.y >= K.maxY() || foot > C.y + 2 || C.y - foot > 2 * H || C.maxY() > A.y + 2
             || A.y - C.maxY() > 2 * H || foot - T.y > 4 * H || C.height > 4 * H);
}

std::optional<NativeApprovalMatch> flattened(
    const NativeApprovalNode& group, const Nodes& a, const Nodes& d, NativeApprovalMatch match)
{
    const auto& all = group.children;
    if (a.size() < 2 || d.size() < 2 || group.role != "AXGroup" || a[a.size() - 2]->id != group.id
        || d[d.size() - 2]->id != group.id)
        return std::nullopt;
    const auto i = static_cast<std::size_t>(
        std::ranges::find(all, match.allowID, &NativeApprovalNode::id) - all.begin());
    if (i < 3 || i + 1 >= all.size() || all[i + 1].id != match.denyID)
        return std::nullopt;
    const auto *title = &all[i - 3], *riskNode = unwrap(all[i - 2]), *command = unwrap(all[i - 1]);
    if (!riskNode || !command || title->role != "AXStaticText" || unwrap(*title) != title)
        return std::nullopt;
    Nodes flat, context;
    for (auto at = i - 3; at <= i + 1; ++at)
        flatten(all[at], flat);
    for (auto at = i - 3; at < i; ++at)
        flatten(all[at], context);
    if (flat.size() > 90 || buttonCount(flat) != 2 || !allVisible(flat))
        return std::nullopt;
    if (i + 2 < all.size() && all[i + 2].role == "AXButton")
        return std::nullopt;
    const auto titles = staticTexts(*title, true), risks = staticTexts(*riskNode, true),
               commands = staticTexts(*command, true);
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1 || !isSummary(titles[0])
        || risks[0] != risk || !isComplete(commands[0]) || isSummary(commands[0])
        || commands[0] == risk)
        return std::nullopt;
    if (!geometry({title, &all[i - 2], &all[i - 1], &all[i], &all[i + 1]})
        || !geometry({title, riskNode, command, &all[i], &all[i + 1]}))
        return std::nullopt;
    match.containerID = group.id;
    match.layout = NativeApprovalLayout::flattened;
    for (const auto* node : context)
        match.contextNodeIDs.push_back(node->id);
    match.context = {titles[0], risk, commands[0], allow, deny};
    return match;
}

} // namespace

bool recognizesButtons(const std::vector<NativeApprovalNode>& roots)
{
    Nodes all;
    for (const auto& root : roots)
        flatten(root, all);
    return std::ranges::any_of(all,
        [](const auto* node) { return node->role == "AXButton" && !buttonLabel(*node).empty(); });
}

std::optional<NativeApprovalMatch> approval(const std::vector<NativeApprovalNode>& roots)
{
    std::vector<Found> found;
    for (const auto& root : roots)
        collect(root, {}, found);
    if (found.size() != 2 || found[0].label == found[1].label)
        return std::nullopt;
    const auto& a = (found[0].label == allow ? found[0] : found[1]).path;
    const auto& d = (found[0].label == allow ? found[1] : found[0]).path;
    if (a[0]->id != d[0]->id || !a.back()->enabled || !d.back()->enabled)
        return std::nullopt;
    Nodes common;
    for (std::size_t at = 0; at < std::min(a.size(), d.size()) && a[at]->id == d[at]->id; ++at)
        common.push_back(a[at]);
    const NativeApprovalMatch match{
        .windowID = a[0]->id, .allowID = a.back()->id, .denyID = d.back()->id};
    for (std::size_t tried = 0; tried < 5 && tried < common.size(); ++tried) {
        if (auto card = grouped(*common[common.size() - 1 - tried], match))
            return card;
    }
    return common.empty() ? std::nullopt : flattened(*common.back(), a, d, match);
}

} // namespace notch::oracle
