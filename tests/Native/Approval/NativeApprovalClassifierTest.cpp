// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Approval/NativeApprovalClassifier.h"

#include "Native/Mutation.h"

namespace notch {
namespace {

using namespace NativeApprovalClassifier;

const std::string groupedTree = R"(
Window #w
  Group #page
    StaticText #chat "请稍候" "稍候"
    Group #card
      StaticText #title "检测到批量删除操作：累计删除数量 12 项，阈值 10"
      StaticText #risk "高风险命令，可能影响系统稳定性"
      Group #box
        StaticText #command " rm -rf build\n"
      Button #allow "1 允许本次删除"
      Button #deny "2 取消删除"
)";

const std::string flattenedTree = R"(
Window #w
  Group #page
    StaticText #before "好的"
    StaticText #title @40,100,200,20 "检测到批量删除操作：累计删除数量 12 项，阈值 10"
    Group #riskBox @250,100,180,20
      StaticText #risk @250,100,180,20 "高风险命令，可能影响系统稳定性"
    StaticText #command @40,124,400,20 "rm -rf build"
    Button #allow @40,150,300,30
      StaticText "1."
      StaticText "允许本次删除"
    Button #deny @40,184,300,30 "取消删除"
    StaticText #after "完"
)";

TEST(NativeApprovalClassifier, namesThePartsOfACardInEachLayout)
{
    NativeApprovalMatch match{.windowID = "w",
        .containerID = "card",
        .allowID = "allow",
        .denyID = "deny",
        .contextNodeIDs = {"title", "risk", "command"},
        .layout = NativeApprovalLayout::grouped,
        .context = {.title = "检测到批量删除操作：累计删除数量 12 项，阈值 10",
            .risk = "高风险命令，可能影响系统稳定性",
            .command = " rm -rf build\n",
            .allowLabel = "允许本次删除",
            .denyLabel = "取消删除"}};
    EXPECT_EQ(uniqueMatch(parseTree(groupedTree)), match);
    match.containerID = "page";
    match.contextNodeIDs = {"title", "riskBox", "risk", "command"};
    match.layout = NativeApprovalLayout::flattened;
    match.context.command = "rm -rf build";
    EXPECT_EQ(uniqueMatch(parseTree(flattenedTree)), match);
    EXPECT_EQ(uniqueMatch({}), std::nullopt);
}

// What is wrong with either layout.
const Mutations spoiltCards{// The buttons.
    "Window #w => Window #v\n  Button \"允许本次删除\"\nWindow #w",
    "before deny Button \"取消删除\"", "允许本次删除\" => 允许删除\"", "取消删除\" => 取消\"",
    "取消删除\" => 取消删除\" \"帮助\"", "w-visible", "page-visible", "allow-visible",
    "deny-visible", "allow-enabled", "deny-enabled",
    // The title.
    "数量 12 => 数量 9", "数量 12 => 数量 012", "数量 12 项，阈值 10 => 数量 0 项，阈值 0",
    "数量 12 => 数量 9223372036854775808", "阈值 10 => 阈值 9223372036854775808",
    "检测到 => 已检测到", "阈值 10 => 阈值 10 项", "阈值 10 => 阈值 010",
    // The risk.
    "高风险命令， => 低风险命令，", "稳定性 => 稳定性 ", "稳定性\" => 稳定性\" \"龘\"",
    // The command.
    "rm -rf build => ", "rm -rf build => \u3000", "rm -rf => rm … -rf", "rm -rf => rm ... -rf",
    "rm -rf => rm ⋯ -rf", "rm -rf => rm \x1B -rf", "rm -rf => rm \u202E -rf", "command-visible"};

const Mutations spoiltGroups{"card=List", "before box StaticText \"ls\"",
    "before box Button \"帮助\"", "in deny Button \"帮助\"", "before box Image -visible",
    "box=StaticText", "box=Button",
    "\" rm -rf build\\n\" => \"检测到批量删除操作：累计删除数量 12 项，阈值 10\"",
    "\" rm -rf build\\n\" => \"高风险命令，可能影响系统稳定性\"",
    "      Button #deny =>     Button #deny"};

const Mutations spoiltRows{"page=List",
    // The title.
    "title-enabled", "title=Heading", "title-frame", "in title Image",
    "StaticText #title => Group @40,100,200,20\n      StaticText #title",
    "阈值 10\" => 阈值 10\" \"龘\"",
    // The risk and its wrapper.
    "risk-enabled", "risk=Heading", "risk-frame", "in risk Image", "after risk Image",
    "riskBox-enabled", "riskBox-visible", "riskBox=List", "riskBox-frame", "riskBox.w-180",
    "250,100,180,20 => 250,100,180,20 \"\"",
    "      StaticText #risk =>       Group @250,100,180,20\n        StaticText #risk",
    // The command.
    "command-enabled", "command-frame", "command.w-400", "command.h-20",
    "\"rm -rf build\" => \"rm -rf build\" \"ls\"",
    "rm -rf build => 检测到批量删除操作：累计删除数量 12 项，阈值 10",
    "rm -rf build => 高风险命令，可能影响系统稳定性",
    // The buttons.
    "allow-frame", "deny-frame", "before allow Image", "before deny Image", "in allow Button",
    "in allow Image -visible", "after=Button",
    "    Button #allow =>     Group\n      Button #allow \"允许本次删除\"",
    // Deny above allow, and nothing below.
    R"("1."
      StaticText "允许本次删除"
    Button #deny @40,184,300,30 "取消删除"
    StaticText #after "完" => "2."
      StaticText "取消删除"
    Button #deny @40,184,300,30 "允许本次删除")"};

// What the rules pass over.
const Mutations harmlessGroups{"操作：累计删除数量 12 项，阈值 10 => 操作: 累计删除数量12项,阈值10",
    "数量 12 => 数量 10", "数量 12 => 数量 9223372036854775807", "阈值 10 => 阈值 10\\n",
    "title-enabled", "chat-visible", "\"请稍候\" => \"\" \" \"", "before box StaticText \" \"",
    "\" rm -rf build\\n\" => \" rm -rf build\\n\" \" rm -rf build\\n\" \"\"", "rm -rf => rm .. -rf",
    "Window #w => Window #v\n  Group -visible\n    Button \"取消删除\"\nWindow #w"};
const Mutations harmlessRows{"before=Button", "drop before", "drop after", "，阈值 => ， 阈值",
    "in deny Image", "StaticText #command => Group @40,124,400,20\n      StaticText #command"};

TEST(NativeApprovalClassifier, refusesACardThatBreaksOneRule)
{
    expectMatches(groupedTree, joined({spoiltCards, spoiltGroups}), false, uniqueMatch);
    expectMatches(flattenedTree, joined({spoiltCards, spoiltRows}), false, uniqueMatch);
}

TEST(NativeApprovalClassifier, acceptsWhatTheRulesPassOver)
{
    expectMatches(groupedTree, harmlessGroups, true, uniqueMatch);
    expectMatches(flattenedTree, harmlessRows, true, uniqueMatch);
}

// Each rule at its bound.
const Mutations cardBounds{"button height: deny.h-18 deny.y-12 allow.h-18",
    "button height: deny.h+98 deny.y+94 allow.h+98", "buttons' left edges: deny.x+2",
    "buttons' left edges: deny.x-2", "buttons' widths: deny.w+2", "buttons' widths: deny.w-2",
    "buttons' heights: deny.h+2", "buttons' heights: deny.h-2", "buttons overlap: deny.y-5",
    "buttons far apart: deny.y+20", "buttons far apart: allow.h-10 deny.h-10 deny.y+6",
    "title beside command: title.x+30", "title beside command: title.x-30",
    "command left of buttons: command.x-2", "command right of buttons: title.x+10 command.x+30",
    "risk left of title: riskBox.x-212", "risk right of buttons: riskBox.x+89.5",
    "risk above title: riskBox.y-2",
    "risk below title: riskBox.h-18 risk.h-18 risk.y+9 riskBox.y+19.5",
    "title below risk: risk.h-18 risk.y+9 riskBox.y-1.5 riskBox.h-18",
    "heading meets command: command.y-6",
    "command far below heading: allow.y+56 deny.y+56 command.y+56",
    "command meets buttons: command.y+8", "buttons far below command: deny.y+54 allow.y+54",
    "heading height: command.y+100 allow.y+100 deny.y+100 title.h+100",
    "command height: allow.y+100 deny.y+100 command.h+100", "wrapper left: risk.x-2",
    "wrapper right: risk.x+2", "wrapper top: risk.y-2", "wrapper bottom: risk.y+2",
    "heading meets command: risk.y+2 command.y-4",
    "heading meets command: title.h-4 risk.h-4 command.y-6"};

TEST(NativeApprovalClassifier, holdsEachFrameRuleToItsBound)
{
    expectBounds(flattenedTree, cardBounds, uniqueMatch);
}

TEST(NativeApprovalClassifier, refusesASpoiltCardWhateverElseIsChanged)
{
    expectRefusedWith(groupedTree, joined({spoiltCards, spoiltGroups}), harmlessGroups,
        {R"("请稍候" => "" " ")"}, uniqueMatch);
    expectRefusedWith(flattenedTree, joined({spoiltCards, spoiltRows}),
        joined({harmlessRows, atBounds(cardBounds)}),
        {"drop before", "drop after", "allow.y+100 deny.y+100 command.h+100"}, uniqueMatch);
}

TEST(NativeApprovalClassifier, holdsTheSizeOfACardToItsLimits)
{
    const auto with = [](const std::string& card, const std::string& place,
                          const std::string& more) {
        return uniqueMatch(mutated(card, {place + " => " + more + place})).has_value();
    };
    const std::string image = "      Image\n";
    EXPECT_TRUE(with(groupedTree, "      Group #box", times(83, image))); // 90 nodes
    EXPECT_FALSE(with(groupedTree, "      Group #box", times(84, image)));
    EXPECT_TRUE(with(groupedTree, "      Group #box", nested(11, 6, "Group"))); // A depth of 12
    EXPECT_FALSE(with(groupedTree, "      Group #box", nested(12, 6, "Group")));
    EXPECT_TRUE(with(flattenedTree, "    Button #deny", times(82, image)));
    EXPECT_FALSE(with(flattenedTree, "    Button #deny", times(83, image)));
}

TEST(NativeApprovalClassifier, takesACommandOfAtMost65536Bytes)
{
    EXPECT_TRUE(isCompleteCommand(std::string(65536, 'x')));
    EXPECT_FALSE(isCompleteCommand(std::string(65537, 'x')));
    EXPECT_FALSE(isCompleteCommand("x" + std::string(65536, ' ')));
    EXPECT_FALSE(isCompleteCommand(" \u3000\n"));
    EXPECT_FALSE(isCompleteCommand("rm \xC3 -rf"));
    EXPECT_TRUE(isCompleteCommand("rm\t-rf \\\r\n  build"));
}

TEST(NativeApprovalClassifier, looksForAGroupInFiveAncestors)
{
    const auto within = [](std::size_t lists) {
        const std::string indent(6 + 2 * lists, ' ');
        return uniqueMatch(
            parseTree(groupedTree.substr(0, groupedTree.find("      Button"))
                      + nested(lists, 6, "List") + indent + "Button \"允许本次删除\"\n" + indent
                      + "Button \"取消删除\"\n"))
            .has_value();
    };
    EXPECT_TRUE(within(4)); // The card is the fifth ancestor from below.
    EXPECT_FALSE(within(5));
}

TEST(NativeApprovalClassifier, prefersTheDeepestGroupThatPasses)
{
    EXPECT_EQ(uniqueMatch(mutated(groupedTree, {"drop chat"})).value().containerID, "card");
    EXPECT_EQ(
        uniqueMatch(mutated(groupedTree, {"drop chat", "card=List"})).value().containerID, "page");
}

} // namespace
} // namespace notch
