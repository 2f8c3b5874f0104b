// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Oracle.h"

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>
#include <span>

namespace notch::oracle {
namespace {

bool unsafeText(const std::string& text, std::string_view allowedControls)
{
    return unsafe(text, allowedControls) || text.find("\u2028") != text.npos
        || text.find("\u2029") != text.npos;
}

// Empty if there is none.
std::string single(const Node& node)
{
    const auto texts = distinctTexts(node);
    return texts.size() == 1 && !unsafeText(*texts.begin(), "\n\r") ? *texts.begin() : "";
}

// 0 if it is none.
int page(const std::string& text, int maximum)
{
    static const std::regex form("[1-9][0-9]{0,2}");
    return std::regex_match(text, form) && std::stoi(text) <= maximum ? std::stoi(text) : 0;
}

std::vector<std::string> split(const std::string& text)
{
    static const std::regex blanks(anyBlank() + '+');
    const auto words = trim(text);
    return {std::sregex_token_iterator(words.begin(), words.end(), blanks, -1), {}};
}

bool acceptable(const std::string& text, std::size_t limit, std::string_view allowedControls)
{
    static const std::regex rejected(
        "上一题|下一题|全部跳过|/|发送|send|其他补充…|其他补充\\.\\.\\.|其他（输入你的答案）|标题|"
        "问题标题|占位标题|placeholder|question title|title|loading|加载中",
        std::regex::icase);
    static const std::regex part("…|\\.\\.\\.|⋯|\\{\\{|\\}\\}|\\$\\{|<placeholder>");
    static const std::regex digits("([0-9]|\u0661|\u0662)*"); // Arabic 1, 2; or nothing at all.
    const auto shown = trim(text);
    return text.size() <= limit && !unsafeText(text, allowedControls)
        && std::ranges::count(text, '\n') < 16 && !std::regex_match(shown, rejected)
        && !std::regex_search(text, part) && !std::regex_match(shown, digits);
}

bool leaf(const Node& node, const char* role)
{
    return node.role == role && node.visible && node.children.empty() && usable(node.frame);
}

bool image(const Node& node)
{
    return leaf(node, "AXImage") && distinctTexts(node).empty();
}

bool text(const Node& node)
{
    return leaf(node, "AXStaticText") && node.enabled;
}

bool navigation(const Node& node, const std::string& label)
{
    return node.role == "AXButton" && single(node) == label && node.visible && usable(node.frame)
        && node.children.size() == 1 && image(node.children[0])
        && contains(*node.frame, *node.children[0].frame);
}

bool option(const Node& row, int number)
{
    if (!row.visible || !usable(row.frame) || row.children.size() != 3)
        return false;
    const auto &n = row.children[0], &l = row.children[1], &i = row.children[2];
    if (!text(n) || page(single(n), 20) != number || !text(l) || !acceptable(single(l), 1024, "")
        || !acceptable(single(row), 1100, "\n\r")
        || split(single(row)) != split(single(n) + " " + single(l)) || !image(i))
        return false;
    for (const auto& part : row.children) {
        if (!contains(*row.frame, *part.frame)
            || std::abs(part.frame->midY() - row.frame->midY()) > 2)
            return false;
    }
    const auto &R = *row.frame, &N = *n.frame, &L = *l.frame, &I = *i.frame;
    return N.maxX() <= L.x && L.maxX() <= I.x && L.x - N.maxX() <= R.height && N.x - R.x <= R.height
        && R.maxX() - I.maxX() <= R.height;
}

bool marker(const Node& node)
{
    for (const auto& text : node.texts) {
        const auto parts = split(text);
        if ((node.role == "AXStaticText" && page(text, 20))
            || (parts.size() >= 2 && page(parts[0], 20)))
            return true;
    }
    return std::ranges::any_of(node.children, marker);
}

bool near(double a, double b)
{
    return std::abs(a - b) <= 2;
}

// Of the header's seven and the rows.
bool geometry(const std::vector<ScreenRect>& frames, const ScreenRect& group)
{
    const auto &T = frames[0], &P = frames[1], &S = frames[6], &R = frames[7];
    const auto H = P.height, foot = std::max(T.maxY(), S.maxY());
    const auto follows = [H](double end, double begin, double overlap) {
        return end - overlap <= begin && begin - end <= H;
    };
    for (std::size_t at = 1; at < 7; ++at) {
        const auto& F = frames[at];
        const bool shaped = at >= 2 && at <= 4
                              ? F.height >= H / 3 && F.height <= H && F.width <= 2 * H
                              : near(F.width, H) && near(F.height, H);
        if (!shaped || !near(F.midY(), P.midY())
            || (at > 1 && !follows(frames[at - 1].maxX(), F.x, 1)))
            return false;
    }
    for (std::size_t at = 7; at < frames.size(); ++at) {
        const auto& F = frames[at];
        if (!near(F.x, R.x) || !near(F.width, R.width) || !near(F.height, R.height)
            || (at > 7 && !follows(frames[at - 1].maxY(), F.y, 0)))
            return false;
    }
    return H >= 12 && H <= 64 && std::abs(T.y - P.y) <= H / 2 && T.height <= 16 * H
        && T.maxX() <= P.x + 1 && P.x - T.maxX() <= 2 * H && R.height >= H && R.height <= 3 * H
        && R.width >= 6 * H && R.x <= T.x && T.x - R.x <= R.height && T.maxX() <= R.maxX()
        && R.x <= P.x && S.maxX() <= R.maxX() && foot <= R.y && R.y - foot <= 2 * H
        && std::ranges::all_of(frames, [&](const auto& F) { return contains(group, F); });
}

std::optional<NativeQuestionMatch> card(const Node& group, std::size_t skipAt, const Node& window)
{
    const auto* h = &group.children[skipAt - 6];
    const auto current = page(single(h[2]), 100), total = page(single(h[4]), 100);
    if (!text(h[0]) || !acceptable(single(h[0]), 4096, "\n\r") || !navigation(h[1], "上一题")
        || !text(h[2]) || !current || !text(h[3]) || single(h[3]) != "/" || !text(h[4])
        || total < current || !navigation(h[5], "下一题") || !navigation(h[6], "全部跳过")
        || !h[6].enabled || h[1].enabled != (current >= 2) || h[5].enabled != (current < total))
        return std::nullopt;
    NativeQuestionMatch match{window.id, group.id, h[6].id, {}, single(h[0]), current, total};
    std::vector<ScreenRect> frames;
    for (const auto& node : std::span(h, 7)) {
        frames.push_back(*node.frame);
        std::ranges::transform(flatten(node), std::back_inserter(match.contextNodeIDs), &Node::id);
    }
    auto at = skipAt + 1;
    for (int rows = 0; at < group.children.size(); ++at) {
        const auto& row = group.children[at];
        const auto& parts = row.children;
        if (row.role != "AXButton" || parts.empty() || parts[0].role != "AXStaticText")
            break;
        const bool shaped =
            parts.size() == 3 && parts[1].role == "AXStaticText" && parts[2].role == "AXImage";
        if (!shaped
            && std::ranges::none_of(parts[0].texts, [](const auto& t) { return page(t, 20) > 0; }))
            break;
        if (++rows > 20 || !option(row, rows) || !row.enabled)
            return std::nullopt;
        frames.push_back(*row.frame);
    }
    const auto after = group.children.begin() + static_cast<std::ptrdiff_t>(at);
    if (frames.size() == 7 || std::any_of(after, group.children.end(), marker)
        || !geometry(frames, *group.frame))
        return std::nullopt;
    return match;
}

bool scanned(const Nodes& path)
{
    return std::ranges::all_of(path, [&](const Node* node) {
        return node->visible && node->enabled && (!node->frame || usable(node->frame))
            && (node->role == "AXWindow") == (node == path[0]);
    });
}

} // namespace

std::optional<NativeQuestionMatch> question(const std::vector<Node>& roots)
{
    std::set<std::string> ids;
    std::vector<NativeQuestionMatch> matches;
    std::multiset<std::string> found;
    for (const auto& root : roots) {
        for (const auto& path : paths(root)) {
            const auto& node = *path.back();
            if (node.id.empty() || !ids.insert(node.id).second)
                return std::nullopt;
            for (const auto* label : {"上一题", "下一题", "全部跳过"}) {
                if (node.role == "AXButton" && std::ranges::count(node.texts, label) > 0)
                    found.insert(label);
            }
            if (node.role != "AXGroup" || !scanned(path) || !usable(root.frame)
                || !usable(node.frame) || !contains(*root.frame, *node.frame))
                continue;
            for (std::size_t skip = 6; skip + 1 < node.children.size(); ++skip) {
                if (auto match = card(node, skip, root))
                    matches.push_back(*match);
            }
        }
    }
    const bool once = found == std::multiset<std::string>{"上一题", "下一题", "全部跳过"};
    return once && matches.size() == 1 ? std::optional(matches[0]) : std::nullopt;
}

} // namespace notch::oracle
