// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Scan/AccessibilityScan.h"

#include "Native/FakeHost.h"
#include "Native/Mutation.h"
#include "Native/Tree/PreOrderWalk.h"

#include <gtest/gtest.h>

#include <limits>

namespace notch {
namespace {

const std::string window = "Window #w @0,0,800,600 \"Chat\"\n";
const std::string tree = window + R"(  Group #page @0,0,800,600 "p" "v" "d"
    StaticText #text @10,10,90,20 "t" "v" "d"
    Button #button @10,40,90,20 "b"
      Image #icon
)";

// How far a scan came: "complete" or not, roots of windows, and what else is to be said.
struct Scanned {
    std::string verdict;
    std::vector<NativeApprovalNode> roots;
    std::unordered_map<std::string, std::string> titles;
    std::unordered_map<std::string, AXElement> elements;

    const NativeApprovalNode& node(const std::string& path) const
    {
        for (PreOrderWalk walk(roots); const auto* found = walk.next();)
            if (elements.at(found->id).path == path)
                return *found;
        throw std::out_of_range(path);
    }
};

Scanned scan(FakeHost& host, bool includingQuestions = false)
{
    AXRead read(FakeHost::pid, host.uptime());
    auto roots = AccessibilityScan(host, host, read).readRoots(includingQuestions);
    return {std::string(read.complete ? "complete " : "incomplete ")
                + std::to_string(read.scannedRootCount) + " of "
                + std::to_string(read.primaryWindowCount)
                + (read.questionTreeComplete ? "" : " doubtful")
                + (read.agreedQuestionFallback ? " fallback" : ""),
        std::move(roots), read.windowTitles, read.elements};
}

TEST(AccessibilityScan, readsEachElementAsItIs)
{
    FakeHost host(tree);
    const auto scanned = scan(host);
    EXPECT_EQ(scanned.verdict, "complete 1 of 1");
    using Texts = std::vector<std::string>;
    EXPECT_EQ(scanned.node("page").texts, (Texts{"p", "v", "d"}));
    EXPECT_EQ(scanned.node("text").texts, (Texts{"t", "v"})) << "a text has no description";
    EXPECT_EQ(scanned.node("button").frame, (ScreenRect{10, 40, 90, 20}));
    EXPECT_EQ(scanned.node("icon").id, "ax-5");
    EXPECT_EQ(scanned.titles.at("ax-1"), "Chat");
    EXPECT_EQ(host.calls[1], "manual") << "before the first look at the windows";
}

std::string numbered(int count, const std::string& before, const std::string& after)
{
    std::string lines;
    for (int at = 0; at < count; ++at)
        lines += before + "#m" + std::to_string(at) + after + '\n';
    return lines;
}

TEST(AccessibilityScan, clearsAFlagForWhatItCouldNotRead)
{
    // What happens to the host, and what becomes of the scan.
    const std::vector<std::pair<std::string, std::string>> rows{
        {"fail application", "incomplete 0 of -1"},
        {"fail AXWindows application", "incomplete 0 of -1"},
        {"AXWindows application = other", "incomplete 0 of -1"},
        {"AXWindows application = []", "incomplete 0 of 0"},
        {"AXMinimized w = true", "incomplete 0 of 1"},
        {"fail AXMinimized w", "incomplete 0 of 1"},
        {"AXPosition w = -25200", "incomplete 0 of 1"},
        {"800,600 => 800,0", "incomplete 0 of 1"},
        {"fail attributes icon", "incomplete 0 of 1"},
        {"AXRole icon = none", "incomplete 0 of 1"},
        {"AXChildren page = -25212", "complete 1 of 1"}, // No value.
        {"AXChildren page = -25205", "complete 1 of 1"}, // Not supported.
        {"AXChildren page = none", "complete 1 of 1"},
        {"AXChildren page = -25200", "complete 1 of 1 doubtful"},
        {"AXChildren page = other", "complete 1 of 1 doubtful"},
        {"AXChildren icon = [#gone]", "incomplete 0 of 1"},
        {"AXChildren icon = [#page]", "incomplete 0 of 1"}, // A circle.
        {"AXChildren icon = [#text]", "complete 1 of 1"}, // One element in two places.
        {"application takes 0.45", "incomplete 0 of -1"},
        {"manual takes 0.45", "incomplete 0 of -1"},
        {"AXWindows application takes 0.45", "incomplete 0 of -1"},
        {"attributes text takes 0.45", "incomplete 0 of 1"},
        {"attributes text takes 0.4499", "complete 1 of 1"},
        {"AXTitle w takes 0.45", "incomplete 1 of 1"},
    };
    for (const auto& [change, verdict] : rows) {
        FakeHost host(tree);
        host.apply(change);
        EXPECT_EQ(scan(host).verdict, verdict) << change;
        EXPECT_LE(host.time, 100.45) << change << ": went on after its time";
    }
}

TEST(AccessibilityScan, holdsAHostToItsLimits)
{
    const auto windows = [](int count) { return numbered(count, "Window ", " @0,0,9,9"); };
    const auto groups = [](int count) { return window + numbered(count, "  Group ", ""); };
    const auto deep = [](std::size_t depth) { return window + nested(depth, 2, "Group"); };
    const auto texts = [](int count, std::size_t bytes, const std::string& more) {
        return "Window #w @0,0,9,9" + more + '\n'
             + numbered(count, "  Group ", " \"" + std::string(bytes, 'x') + '"');
    };
    const std::vector<std::pair<std::string, std::string>> rows{
        {windows(12), "complete 12 of 12"},
        {windows(13), "incomplete 0 of -1"},
        {groups(1798), "complete 1 of 1"},
        {groups(1799), "incomplete 0 of 1"},
        {deep(36), "complete 1 of 1"},
        {deep(37), "incomplete 0 of 1"},
        {texts(1, 65536, ""), "complete 1 of 1"},
        {texts(1, 65537, ""), "incomplete 0 of 1"},
        {texts(16, 65536, ""), "complete 1 of 1"},
        {texts(16, 65536, " \"x\""), "incomplete 0 of 1"},
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        FakeHost host(rows[row].first);
        EXPECT_EQ(scan(host).verdict, rows[row].second) << row;
    }
    FakeHost host(tree + "Window #v @0,0,9,9");
    host.apply("AXMinimized w = true");
    EXPECT_EQ(scan(host).verdict, "incomplete 1 of 2") << "the other window is read";
}

TEST(AccessibilityScan, readsTheWindowThatIsMainAndFocusedForQuestionsAlone)
{
    const std::vector<std::pair<std::string, std::string>> rows{
        {"AXTitle w = none", "complete 1 of 0 fallback"},
        {"AXFocusedWindow application = #v", "incomplete 0 of 0"},
        {"fail AXMainWindow application", "incomplete 0 of 0"},
        {"fail pid w", "incomplete 0 of 0"},
        {"AXRole w = AXSheet", "incomplete 0 of 0"},
        {"AXRole w takes 0.45", "incomplete 0 of 0"},
    };
    for (const auto& [change, verdict] : rows) {
        FakeHost host(tree + "Window #v @0,0,9,9");
        host.fallBackTo("w");
        host.apply(change);
        const auto scanned = scan(host, true);
        EXPECT_EQ(scanned.verdict, verdict) << change;
        EXPECT_TRUE(scanned.titles.empty()) << change;
        EXPECT_EQ(scan(host).verdict, "incomplete 0 of 0") << change << ", without questions";
    }
}

TEST(AccessibilityScan, seesWhatLiesInItsWindowAndReadsBelowItAlone)
{
    // The node's line, and whether it is visible.
    const std::vector<std::pair<std::string, bool>> rows{{"Button @-2,0,804,602", true},
        {"Button @-3,0,9,9", false}, {"Button", false}, {"Button @1,1,0,9", false},
        {"Button -visible @0,0,9,9", false}, {"StaticText @799,0,9,9", true},
        {"StaticText @800,0,9,9", false}, {"StaticText", false}, {"Group", true},
        {"Group @9,9,0,0", true}, {"Group @800,0,9,9", false}, {"Group -visible", false}};
    for (const auto& [line, visible] : rows) {
        const auto role = line.substr(0, line.find(' '));
        FakeHost host(
            window + "  " + role + " #n" + line.substr(role.size()) + "\n    Group #below");
        const auto scanned = scan(host);
        const auto& node = scanned.node("n");
        EXPECT_EQ(node.visible, visible) << line;
        EXPECT_EQ(node.children.size(), visible && role != "StaticText" ? 1U : 0U) << line;
    }
}

TEST(AccessibilityScan, takesTheSafeSideOfAnAttributeThatIsMissing)
{
    FakeHost host(tree);
    for (const auto* change : {"AXEnabled button = -1", "AXEnabled page = -1",
             "AXHidden page = other", "AXValue page = other", "AXTitle w = other"})
        host.apply(change);
    host.odd["AXSize icon"] = AXSize{std::numeric_limits<double>::infinity(), 1};
    host.odd["AXPosition icon"] = AXPoint{};
    const auto scanned = scan(host);
    EXPECT_FALSE(scanned.node("button").enabled);
    EXPECT_TRUE(scanned.node("page").enabled);
    EXPECT_TRUE(scanned.node("page").visible);
    EXPECT_EQ(scanned.node("page").texts, (std::vector<std::string>{"p", "d"}));
    EXPECT_EQ(scanned.node("icon").frame, std::nullopt);
    EXPECT_EQ(scanned.titles.at("ax-1"), "QuillMoss 窗口");
}

} // namespace
} // namespace notch
