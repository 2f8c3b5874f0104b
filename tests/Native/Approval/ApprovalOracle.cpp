// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Oracle.h"

#include <algorithm>
#include <array>
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

std::set<std::string> distinctTexts(const Node& node)
{
    std::set<std::string> texts(node.texts.begin(), node.texts.end());
    texts.erase("");
    return texts;
}

bool usable(const std::optional<ScreenRect>& frame)
{
    return frame && frame->width > 0 && frame->height > 0
        && std::ranges::all_of(std::array{frame->x, frame->y, frame->width, frame->height,
                                   frame->x + frame->width, frame->y + frame->height},
            [](double n) { return std::isfinite(n); });
}

bool contains(const ScreenRect& outer, const ScreenRect& inner, double grown)
{
    return inner.x >= outer.x - grown && inner.y >= outer.y - grown
        && inner.x + inner.width <= outer.x + outer.width + grown
        && inner.y + inner.height <= outer.y + outer.height + grown;
}

std::vector<Nodes> paths(const Node& node)
{
    std::vector<Nodes> all{{&node}};
    for (const auto& child : node.children) {
        for (auto path : paths(child)) {
            path.insert(path.begin(), &node);
            all.push_back(path);
        }
    }
    return all;
}

Nodes flatten(const Node& node)
{
    Nodes nodes;
    std::ranges::transform(
        paths(node), std::back_inserter(nodes), [](const Nodes& path) { return path.back(); });
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
    std::vector<std::string> shown;
    for (const auto& text : distinctTexts(node)) {
        if (!trim(text).empty())
            shown.push_back(text);
    }
    return shown;
}

Nodes staticTextNodes(const Node& node, bool skippingButtons)
{
    if (node.role == "AXStaticText")
        return shownTexts(node).empty() ? Nodes{} : Nodes{&node};
    Nodes found;
    for (const auto& child : node.children) {
        if (node.role != "AXButton" || !skippingButtons)
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
    auto texts = distinctTexts(node);
    if (texts.empty()) {
        std::string joined;
        for (const auto& text : staticTexts(node, false))
            joined += (joined.empty() ? "" : " ") + text;
        texts.insert(joined);
    }
    const auto label = labelOf(*texts.begin());
    const auto agrees = [&](const auto& text) { return labelOf(text) == label; };
    return std::ranges::all_of(texts, agrees) ? label : "";
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

bool isButton(const Node* node)
{
    return node->role == "AXButton";
}

// Common to both layouts.
bool isCard(const Nodes& nodes)
{
    return nodes.size() <= 90 && std::ranges::count_if(nodes, isButton) == 2 && allVisible(nodes);
}

std::optional<NativeApprovalMatch> grouped(const Node& group, NativeApprovalMatch match)
{
    const bool deep =
        std::ranges::any_of(paths(group), [](const auto& path) { return path.size() > 12; });
    if (group.role != "AXGroup" || deep || !isCard(flatten(group)))
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

bool live(const Node& node, const char* role)
{
    return node.role == role && node.visible && node.enabled;
}

bool plain(const Node& node)
{
    return live(node, "AXStaticText") && node.children.empty();
}

const Node* unwrap(const Node& node)
{
    if (plain(node))
        return &node;
    const bool wraps = live(node, "AXGroup") && node.texts.empty() && node.children.size() == 1
                    && plain(node.children[0]) && usable(node.frame)
                    && usable(node.children[0].frame)
                    && contains(*node.frame, *node.children[0].frame, 2);
    return wraps ? &node.children[0] : nullptr;
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
    if (i < 3 || i + 1 >= all.size() || all[i + 1].id != match.denyID
        || (i + 2 < all.size() && isButton(&all[i + 2])))
        return std::nullopt;
    const auto *title = &all[i - 3], *riskNode = unwrap(all[i - 2]), *command = unwrap(all[i - 1]);
    Nodes flat;
    for (auto at = i - 3; at <= i + 1; ++at) {
        std::ranges::copy(flatten(all[at]), std::back_inserter(flat));
        for (const auto* node : at < i ? flatten(all[at]) : Nodes{})
            match.contextNodeIDs.push_back(node->id);
    }
    if (!plain(*title) || !riskNode || !command || !isCard(flat)
        || !geometry({title, &all[i - 2], &all[i - 1], &all[i], &all[i + 1]})
        || !geometry({title, riskNode, command, &all[i], &all[i + 1]}))
        return std::nullopt;
    const auto titles = shownTexts(*title), risks = shownTexts(*riskNode),
               commands = shownTexts(*command);
    if (titles.size() != 1 || risks != std::vector{risk} || commands.size() != 1
        || !isSummary(titles[0]) || !isComplete(commands[0]) || isSummary(commands[0])
        || commands[0] == risk)
        return std::nullopt;
    match.containerID = group.id;
    match.layout = NativeApprovalLayout::flattened;
    match.context = {titles[0], risk, commands[0], allow, deny};
    return match;
}

} // namespace

bool recognizesButtons(const std::vector<Node>& roots)
{
    const auto shows = [](const Node* node) {
        return isButton(node) && !buttonLabel(*node).empty();
    };
    return std::ranges::any_of(
        roots, [&](const Node& root) { return std::ranges::any_of(flatten(root), shows); });
}

std::optional<NativeApprovalMatch> approval(const std::vector<Node>& roots)
{
    std::vector<Nodes> allows, denies;
    for (const auto& root : roots) {
        for (const auto& path : paths(root)) {
            const auto label =
                isButton(path.back()) && allVisible(path) ? buttonLabel(*path.back()) : "";
            if (!label.empty())
                (label == allow ? allows : denies).push_back(path);
        }
    }
    if (allows.size() != 1 || denies.size() != 1)
        return std::nullopt;
    const auto &a = allows[0], &d = denies[0];
    if (a[0]->id != d[0]->id || !a.back()->enabled || !d.back()->enabled)
        return std::nullopt;
    Nodes common(a.begin(), std::ranges::mismatch(a, d, {}, &Node::id, &Node::id).in1);
    const NativeApprovalMatch match{
        .windowID = a[0]->id, .allowID = a.back()->id, .denyID = d.back()->id};
    for (std::size_t tried = 0; tried < 5 && tried < common.size(); ++tried) {
        if (auto card = grouped(*common[common.size() - 1 - tried], match))
            return card;
    }
    return flattened(*common.back(), a, d, match);
}

} // namespace notch::oracle
