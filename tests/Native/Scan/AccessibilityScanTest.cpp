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

// One thing about a host, and what becomes of its scan.
struct Row {
    std::string name;
    std::function<void(FakeHost&)> arrange;
    std::string verdict;
};

const auto answering = [](std::string what, AXValue value) {
    return [=](FakeHost& host) { host.odd[what] = value; };
};
const auto failing = [](std::string call) {
    return [=](FakeHost& host) { host.failing.insert(call); };
};
const auto showing = [](std::string text) { return [=](FakeHost& host) { host.show(text); }; };
// From this call on each takes that long.
const auto slowFrom = [](std::string slow, double seconds) {
    return [=](FakeHost& host) {
        host.before = [=, &host](const std::string& call) {
            if (call == slow)
                host.time += seconds;
        };
    };
};
std::string numbered(int count, const std::string& before, const std::string& after)
{
    std::string lines;
    for (int at = 0; at < count; ++at)
        lines += before + "#m" + std::to_string(at) + after + '\n';
    return lines;
}
std::string texts(int count, std::size_t bytes)
{
    return window + numbered(count, "  Group ", " \"" + std::string(bytes, 'x') + '"');
}

TEST(AccessibilityScan, clearsAFlagForWhatItCouldNotRead)
{
    const std::vector<Row> rows{
        {"no application element", failing("application"), "incomplete 0 of -1"},
        {"no answer about the windows", failing("AXWindows application"), "incomplete 0 of -1"},
        {"windows that are no list", answering("AXWindows application", AXOther{}),
            "incomplete 0 of -1"},
        {"no window", showing(""), "incomplete 0 of 0"},
        {"12 windows", showing(numbered(12, "Window ", " @0,0,9,9")), "complete 12 of 12"},
        {"13 windows", showing(numbered(13, "Window ", " @0,0,9,9")), "incomplete 0 of -1"},
        {"a minimised window beside another",
            [](FakeHost& host) {
                host.show(tree + "Window #v @0,0,9,9");
                host.odd["AXMinimized w"] = true;
            },
            "incomplete 1 of 2"},
        {"minimised or not is unknown", failing("AXMinimized w"), "incomplete 0 of 1"},
        {"a window without a place", showing("Window #w"), "incomplete 0 of 1"},
        {"a window without an area", showing("Window #w @0,0,9,0"), "incomplete 0 of 1"},
        {"no answer about an element", failing("attributes icon"), "incomplete 0 of 1"},
        {"a role that is no text", answering("AXRole icon", AXNull{}), "incomplete 0 of 1"},
        {"children that say none", answering("AXChildren page", AXError{AXError::noValue}),
            "complete 1 of 1"},
        {"children unsupported",
            answering("AXChildren page", AXError{AXError::attributeUnsupported}),
            "complete 1 of 1"},
        {"no children at all", answering("AXChildren page", AXNull{}), "complete 1 of 1"},
        {"children that cannot be told from an error",
            answering("AXChildren page", AXError{-25200}), "complete 1 of 1 doubtful"},
        {"a child that is gone", answering("AXChildren icon", AXElements{{"host", "gone"}}),
            "incomplete 0 of 1"},
        {"a circle", answering("AXChildren icon", AXElements{{"host", "page"}}),
            "incomplete 0 of 1"},
        {"one element in two places", answering("AXChildren icon", AXElements{{"host", "text"}}),
            "complete 1 of 1"},
        {"1,799 nodes", showing(window + numbered(1798, "  Group ", "")), "complete 1 of 1"},
        {"1,800 nodes", showing(window + numbered(1799, "  Group ", "")), "incomplete 0 of 1"},
        {"a depth of 36", showing(window + nested(36, 2, "Group")), "complete 1 of 1"},
        {"a depth of 37", showing(window + nested(37, 2, "Group")), "incomplete 0 of 1"},
        {"a text of 65,536 bytes", showing(texts(1, 65536)), "complete 1 of 1"},
        {"a text of 65,537 bytes", showing(texts(1, 65537)), "incomplete 0 of 1"},
        {"texts of 1,048,576 bytes",
            showing("Window #w @0,0,9,9\n" + texts(16, 65536).substr(window.size())),
            "complete 1 of 1"},
        {"texts of one more",
            showing("Window #w @0,0,9,9 \"x\"\n" + texts(16, 65536).substr(window.size())),
            "incomplete 0 of 1"},
        {"time used up by the application", slowFrom("application", 0.45), "incomplete 0 of -1"},
        {"time used up by the announcement", slowFrom("manual", 0.45), "incomplete 0 of -1"},
        {"time used up by the list", slowFrom("AXWindows application", 0.45), "incomplete 0 of -1"},
        {"time used up by a node", slowFrom("attributes text", 0.45), "incomplete 0 of 1"},
        {"time all but used up by a node", slowFrom("attributes text", 0.4499), "complete 1 of 1"},
        {"time used up by the title", slowFrom("AXTitle w", 0.45), "incomplete 1 of 1"},
    };
    for (const auto& row : rows) {
        FakeHost host(tree);
        row.arrange(host);
        EXPECT_EQ(scan(host).verdict, row.verdict) << row.name;
        EXPECT_LE(host.time, 100.45) << row.name << ": went on after its time";
    }
}

TEST(AccessibilityScan, readsTheWindowThatIsMainAndFocusedForQuestionsAlone)
{
    const AXElement own{"host", "w"}, other{"host", "v"};
    const std::vector<Row> rows{
        {"both the same", [](FakeHost&) {}, "complete 1 of 0 fallback"},
        {"two windows", answering("AXFocusedWindow application", other), "incomplete 0 of 0"},
        {"no main window", failing("AXMainWindow application"), "incomplete 0 of 0"},
        {"a window of unknown process", failing("pid w"), "incomplete 0 of 0"},
        {"no window but a sheet", answering("AXRole w", std::string("AXSheet")),
            "incomplete 0 of 0"},
        {"time used up", slowFrom("AXRole w", 0.45), "incomplete 0 of 0"},
    };
    for (const auto& row : rows) {
        FakeHost host(tree + "Window #v @0,0,9,9");
        host.odd = {{"AXWindows application", AXElements{}}, {"AXMainWindow application", own},
            {"AXFocusedWindow application", own}};
        row.arrange(host);
        const auto scanned = scan(host, true);
        EXPECT_EQ(scanned.verdict, row.verdict) << row.name;
        EXPECT_TRUE(scanned.titles.empty()) << row.name;
        EXPECT_EQ(scan(host).verdict, "incomplete 0 of 0") << row.name << ", without questions";
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
    constexpr auto infinite = std::numeric_limits<double>::infinity();
    host.odd = {{"AXEnabled button", AXError{}}, {"AXEnabled page", AXError{}},
        {"AXHidden page", AXOther{}}, {"AXValue page", AXOther{}}, {"AXTitle w", AXOther{}},
        {"AXSize icon", AXSize{infinite, 1}}, {"AXPosition icon", AXPoint{}}};
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
