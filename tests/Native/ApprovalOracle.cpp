// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Oracle.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <regex>
#include <set>

namespace notch::oracle {

namespace {

const std::vector<std::string> blanks{
    " ", "\t", "\n", "\v", "\f", "\r", "\u0085", "\u00A0", "\u2003", "\u2028", "\u2029", "\u3000"};

} // namespace

std::string anyBlank()
{
    std::string form;
    for (const auto& blank : blanks)
        form += (form.empty() ? "(?:" : "|") + blank;
    return form + ')';
}

std::string trim(std::string text)
{
    for (auto size = text.size() + 1; size > text.size();) {
        size = text.size();
        for (const auto& blank : blanks) {
            if (text.starts_with(blank))
                text.erase(0, blank.size());
            else if (text.ends_with(blank))
                text.resize(text.size() - blank.size());
        }
    }
    return text;
}

bool unsafe(const std::string& text, std::string_view allowedControls)
{
    for (const auto* bad : {"\u0085", "\u00AD", "\u200B", "\u200D", "\u202E", "\uFEFF"}) {
        if (text.find(bad) != text.npos)
            return true;
    }
    return std::ranges::any_of(text, [&](unsigned char c) {
        return std::iscntrl(c)
            && allowedControls.find(static_cast<char>(c)) == allowedControls.npos;
    });
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

Nodes flatten(const Node& node)
{
    Nodes nodes{&node};
    for (const auto& child : node.children)
        std::ranges::copy(flatten(child), std::back_inserter(nodes));
    return nodes;
}

namespace {

const std::string allow = "允许本次删除", deny = "取消删除";
const std::string risk = "高风险命令，可能影响系统稳定性";
constexpr auto lineControls = "\t\n\r";

std::string labelOf(const std::string& text)
{
    static const auto marks = "(?:" + anyBlank() + "|[.:]|、|：)*";
    static const std::regex allowForm("(1" + marks + ")?" + allow),
        denyForm("(2" + marks + ")?" + deny);
    const auto label = trim(text);
    return unsafe(text, lineControls)         ? ""
         : std::regex_match(label, allowForm) ? allow
         : std::regex_match(label, denyForm)  ? deny
                                              : "";
}

// Of a static text.
std::vector<std::string> shownTexts(const Node& node)
{
    const std::set<std::string> sorted(node.texts.begin(), node.texts.end());
    std::vector<std::string> shown;
    std::ranges::copy_if(
        sorted, std::back_inserter(shown), [](const auto& text) { return !trim(text).empty(); });
    return shown;
}

Nodes staticTextNodes(const Node& node, bool skippingButtons)
{
    if (node.role == "AXStaticText")
        return shownTexts(node).empty() ? Nodes{} : Nodes{&node};
    Nodes found;
    if (node.role != "AXButton" || !skippingButtons) {
        for (const auto& child : node.children)
            std::ranges::copy(staticTextNodes(child, skippingButtons), std::back_inserter(found));
    }
    return found;
}

std::vector<std::string> staticTexts(const Node& node, bool skippingButtons)
{
    std::vector<std::string> texts;
    for (const auto* shown : staticTextNodes(node, skippingButtons))
        std::ranges::copy(shownTexts(*shown), std::back_inserter(texts));
    return texts;
}

std::string buttonLabel(const Node& node)
{
    std::set<std::string> labels;
    for (const auto& text : distinct(node.texts))
        labels.insert(labelOf(text));
    if (!labels.empty())
        return labels.size() == 1 ? *labels.begin() : "";
    std::string joined;
    for (const auto& text : staticTexts(node, false))
        joined += (joined.empty() ? "" : " ") + text;
    return labelOf(joined);
}

std::size_t depth(const NativeApprovalNode& node)
{
    std::size_t deepest = 0;
    for (const auto& child : node.children)
        deepest = std::max(deepest, depth(child));
    return deepest + 1;
}

bool isSummary(const std::string& text)
{
    static const auto some = anyBlank() + '*', count = some + "([1-9][0-9]*)";
    static const std::regex form("检测到批量删除操作(?:：|:)" + some + "累计删除数量" + count + some
                                 + "项(?:，|,)" + some + "阈值" + count + "\n?");
    std::smatch counts;
    if (!std::regex_match(text, counts, form))
        return false;
    const auto total = std::stold(counts[1]), threshold = std::stold(counts[2]);
    return total >= threshold && total <= 9223372036854775807.0L;
}

bool isComplete(const std::string& text)
{
    static const std::regex shortened("…|\\.\\.\\.|⋯");
    return !trim(text).empty() && text.size() <= 65536 && !std::regex_search(text, shortened)
        && !unsafe(text, lineControls);
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

std::optional<NativeApprovalMatch> grouped(const Node& group, NativeApprovalMatch match)
{
    const auto flat = flatten(group);
    if (group.role != "AXGroup" || flat.size() > 90 || depth(group) > 12 || buttonCount(flat) != 2
        || !allVisible(flat))
        return std::nullopt;
    std::vector<std::string> titles, risks, commands;
    for (const auto& text : staticTexts(group, true))
        (isSummary(text) ? titles : text == risk ? risks : commands).push_back(text);
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1 || !isComplete(commands[0]))
        return std::nullopt;
    match.containerID = group.id;
    for (const auto* node : staticTextNodes(group, true))
        match.contextNodeIDs.push_back(node->id);
    match.context = {titles[0], risk, commands[0], allow, deny};
    return match;
}

const Node* unwrap(const Node& node)
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
    const Node& group, const Nodes& a, const Nodes& d, NativeApprovalMatch match)
{
    const auto& all = group.children;
    if (a.size() < 2 || d.size() < 2 || group.role != "AXGroup" || a[a.size() - 2]->id != group.id
        || d[d.size() - 2]->id != group.id)
        return std::nullopt;
    const auto i =
        static_cast<std::size_t>(std::ranges::find(all, match.allowID, &Node::id) - all.begin());
    if (i < 3 || i + 1 >= all.size() || all[i + 1].id != match.denyID)
        return std::nullopt;
    const auto *title = &all[i - 3], *riskNode = unwrap(all[i - 2]), *command = unwrap(all[i - 1]);
    if (!riskNode || !command || title->role != "AXStaticText" || unwrap(*title) != title)
        return std::nullopt;
    Nodes flat;
    for (auto at = i - 3; at <= i + 1; ++at) {
        std::ranges::copy(flatten(all[at]), std::back_inserter(flat));
        for (const auto* node : at < i ? flatten(all[at]) : Nodes{})
            match.contextNodeIDs.push_back(node->id);
    }
    if (flat.size() > 90 || buttonCount(flat) != 2 || !allVisible(flat))
        return std::nullopt;
    if (i + 2 < all.size() && all[i + 2].role == "AXButton")
        return std::nullopt;
    const auto titles = shownTexts(*title), risks = shownTexts(*riskNode),
               commands = shownTexts(*command);
    if (titles.size() != 1 || risks.size() != 1 || commands.size() != 1 || !isSummary(titles[0])
        || risks[0] != risk || !isComplete(commands[0]) || isSummary(commands[0])
        || commands[0] == risk)
        return std::nullopt;
    if (!geometry({title, &all[i - 2], &all[i - 1], &all[i], &all[i + 1]})
        || !geometry({title, riskNode, command, &all[i], &all[i + 1]}))
        return std::nullopt;
    match.containerID = group.id;
    match.layout = NativeApprovalLayout::flattened;
    match.context = {titles[0], risk, commands[0], allow, deny};
    return match;
}

} // namespace

bool recognizesButtons(const std::vector<Node>& roots)
{
    return std::ranges::any_of(roots, [](const Node& root) {
        return std::ranges::any_of(flatten(root), [](const auto* node) {
            return node->role == "AXButton" && !buttonLabel(*node).empty();
        });
    });
}

std::optional<NativeApprovalMatch> approval(const std::vector<Node>& roots)
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
