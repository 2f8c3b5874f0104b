// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Native/Question/NativeQuestionClassifier.h"

#include "Native/Mutation.h"

namespace notch {
namespace {

using namespace NativeQuestionClassifier;

const std::string cardTree = R"(
Window #w @0,0,2000,2000
  Group #page
    Group #card @0,0,600,800
      StaticText #title @20,20,300,24 "选择哪一个数据库？\n可以以后再改"
      Button #previous @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "2"
      StaticText #separator @400,22,10,20 "/"
      StaticText #total @414,22,20,20 "3"
      Button #next @440,16,32,32 "下一题"
        Image #nextImage @452,28,8,8
      Button #skip @478,16,32,32 "全部跳过"
        Image #skipImage @490,28,8,8
      Button #row1 @16,64,560,40 "1 本地 文件"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本地 文件"
        Image #image1 @550,74,16,20
      Button #row2 @16,112,560,40 "2 远程服务器"
        StaticText #number2 @24,122,16,20 "2"
        StaticText #label2 @48,122,400,20 "远程服务器"
        Image #image2 @550,122,16,20
      TextField #other "其他"
)";

TEST(NativeQuestionClassifier, namesThePartsOfACard)
{
    EXPECT_EQ(uniqueMatch(parseTree(cardTree)),
        (NativeQuestionMatch{.windowID = "w",
            .containerID = "card",
            .anchorID = "skip",
            .contextNodeIDs = {"title", "previous", "previousImage", "current", "separator",
                "total", "next", "nextImage", "skip", "skipImage"},
            .title = "选择哪一个数据库？\n可以以后再改",
            .currentPage = 2,
            .totalPages = 3}));
    EXPECT_EQ(uniqueMatch({}), std::nullopt);
}

const std::string title = R"("选择哪一个数据库？\n可以以后再改")";

Mutations titled(const std::vector<std::string>& texts)
{
    Mutations mutations;
    for (const auto& text : texts)
        mutations.push_back(title + " => \"" + text + '"');
    return mutations;
}

const Mutations spoiltTitles = titled({"", "  ", "a\" \"b", "加载中", " Title ", "SEND", "发送",
    "placeholder", "loading", "全部跳过", "123", "\u0661\u0662", "a...b", "a…", "a⋯", "a {{x",
    "a }}x", "a ${x", "a <placeholder>", "a\tb", "a\u200Db", "a\u2028b", "a\u2029b"});

// A node that is hidden, disabled, without a frame, or of another role.
const Mutations spoiltNodes{"w=Group", "w-visible", "w-frame", "w.h-2000", "w.x+1e308 w.w+1e308",
    "page-visible", "page-enabled", "page=Window", "card=List", "card-visible", "card-enabled",
    "card-frame", "title=Heading", "title-visible", "title-enabled", "title-frame", "next=Link",
    "next-visible", "next-enabled", "next-frame", "nextImage=StaticText", "nextImage-visible",
    "nextImage-frame", "nextImage.w-8", "previous-enabled", "skip-enabled", "current=Image",
    "current-enabled", "separator-visible", "row1=Group", "row2-visible", "row2-enabled",
    "row2-frame", "number1-visible", "number1-enabled", "number1-frame", "label1-enabled",
    "label1-frame", "label2=Link", "image2=StaticText", "image2-visible", "image2.w-16"};

const Mutations spoiltTexts{// Ids and controls.
    "#page => #page @0,0,0,0", "#page => #-", "#page => #other",
    "before page Button -visible \"全部跳过\"",
    "Window #w => Window #v\n  Button \"下一题\"\nWindow #w", "\"上一题\" => \"上一题\" \"下一题\"",
    "\"上一题\" => \"上一题\" \"x\"", "上一题 => 上一页",
    // The header.
    "in title Image", "drop nextImage", "after nextImage Image", "in skipImage Image",
    "452,28,8,8 => 452,28,8,8 \"x\"", "before total Image", "\"2\" => \"0\"", "\"2\" => \"02\"",
    "\"2\" => \"2a\"", "\"2\" => \"1\"", "\"/\" => \"|\"", "\"3\" => \"1\"", "\"3\" => \"2\"",
    "\"3\" => \"101\"",
    R"(#previous @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "2" => #previous -enabled @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "0")",
    // The rows.
    "in image2 Image",
    R"("2 远程服务器"
        StaticText #number2 @24,122,16,20 "2" => "3 远程服务器"
        StaticText #number2 @24,122,16,20 "3")",
    "after image2 Image", "drop label2", "550,122,16,20 => 550,122,16,20 \"x\"",
    "2 远程服务器 => 2 远程服务器 推荐", "2 远程服务器 => 远程服务器", "20 \"1\" => 20 \"2\"",
    R"("2 远程服务器"
        StaticText #number2 @24,122,16,20 "2" => "x 远程服务器"
        StaticText #number2 @24,122,16,20 "x")",
    "122,16,20 \"2\" => 122,16,20 \"3\"", "20 \"本地 文件\" => 20 \"本地\\n文件\"",
    R"(1 本地 文件"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本地 文件" => 1 本…"
        StaticText #number1 @24,74,16,20 "1"
        StaticText #label1 @48,74,400,20 "本…")",
    // What follows them.
    "before other StaticText \"3\"", "\"其他\" => \"3 其他\"",
    "before other Group\n        Link\n          StaticText \"20\""};

const std::string firstPage = R"(#previous @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "2" => #previous -enabled @340,16,32,32 "上一题"
        Image #previousImage @352,28,8,8
      StaticText #current @376,22,20,20 "1")";

const Mutations harmlessCards{"#page => #page @0,0,1,1", "before page Image -visible",
    "\"上一题\" => \"上一题\" \"\" \"上一题\"", "1 本地 文件 => 1\\n本地   文件",
    firstPage, // And the last of 100.
    "\"3\" => \"100\"", "\"其他\" => \"21 其他\" \"3\" \"0 x\"",
    title + " => \"title of the book\"", "before other Button \"帮助\"",
    "before other StaticText \"下一题\""};

TEST(NativeQuestionClassifier, refusesACardThatBreaksOneRule)
{
    expectMatches(cardTree, joined({spoiltTitles, spoiltNodes, spoiltTexts}), false, uniqueMatch);
}

TEST(NativeQuestionClassifier, acceptsWhatTheRulesPassOver)
{
    expectMatches(cardTree, harmlessCards, true, uniqueMatch);
}

// Each rule at its bound.
const Mutations cardBounds{"paging height: card*0.375 previous.h-0",
    "paging height: card*2 previous.h+0", "shape of a paging button: next.w+2",
    "shape of a paging button: skip.w-2", "shape of a paging button: skip.y-1 skip.h+2",
    "shape of a paging button: next.y+1 next.h-2", "shape of a paging button: next.y+2",
    "shape of a page text: card*0.375 current.y+1.75 current.h-3.5",
    "shape of a page text: separator.y-6 separator.h+12",
    "shape of a page text: next.x+44 skip.x+44 total.w+44", "shape of a page text: current.y-2",
    "title's top: title.y+12", "title's height: row1.y+484 row2.y+484 title.h+488",
    "title meets paging: title.w+21", "title far from paging: title.w-44",
    "row height: row2.h-8 row1.h-8", "row height: row2.y+56 row2.h+56 row1.h+56",
    "row width: title.w-290 previous.x-309 current.w-18 current.x-311 separator.w-8 "
    "separator.x-332 "
    "total.w-18 total.x-343 next.x-366 skip.x-370 label1.w-380 image1.x-380 row2.w-368 "
    "label2.w-380 image2.x-380 row1.w-368",
    "title's left edge: title.x-4", "title's left edge: title.w-36 title.x+36",
    "within the width of a row: image1.x-66 row2.w-66 image2.x-66 row1.w-66",
    "rows below header: row1.y-16", "rows below header: row2.y+48 row1.y+48",
    "neighbours in the header: current.x-5",
    "neighbours in the header: next.x+28 skip.x+28 total.x+28",
    "neighbours in the header: skip.x+26", "rows alike: row2.x+2", "rows alike: row2.w+2",
    "rows alike: row2.h-2", "rows in one column: row2.y-8", "rows in one column: row2.y+24",
    "group in the window: card.w+1400", "row in the group: card.w-24",
    "image in its button: skipImage.x+12", "image in its row: image1.x+10",
    "number meets label: label1.x-8", "label meets image: label1.w+102",
    "label far from number: label1.x+32", "number far from the edge: label1.x+32 number1.x+32",
    "image far from the edge: image1.x-30", "number off the line: number1.y+2",
    "label off the line: label1.y-2", "image off the line: image1.y+2"};

TEST(NativeQuestionClassifier, holdsEachFrameRuleToItsBound)
{
    expectBounds(cardTree, cardBounds, uniqueMatch);
}

TEST(NativeQuestionClassifier, refusesASpoiltCardWhateverElseIsChanged)
{
    expectRefusedWith(cardTree, joined({spoiltTitles, spoiltNodes, spoiltTexts}),
        joined({harmlessCards, atBounds(cardBounds)}), {firstPage}, uniqueMatch);
}

// The card with as many rows, and with what follows them.
bool takes(int rows, const std::string& end)
{
    auto card = cardTree.substr(0, cardTree.find("      Button #row1"));
    for (int number = 1; number <= rows; ++number) {
        const auto row = std::to_string(number);
        const auto at = [&](const char* x, int down, const char* size) {
            return std::string(" @") + x + ',' + std::to_string(56 + 32 * number + down) + ','
                 + size;
        };
        card += "      Button" + at("16", 0, "560,32") + " \"" + row + " x\"\n        StaticText"
              + at("24", 6, "16,20") + " \"" + row + "\"\n        StaticText"
              + at("48", 6, "400,20") + " \"x\"\n        Image" + at("550", 6, "16,20") + '\n';
    }
    return uniqueMatch(parseTree(card + end)).has_value();
}

TEST(NativeQuestionClassifier, takesOneToTwentyRows)
{
    EXPECT_FALSE(takes(0, "      TextField\n"));
    EXPECT_TRUE(takes(1, ""));
    EXPECT_TRUE(takes(20, "      TextField\n"));
    EXPECT_FALSE(takes(21, "      TextField\n"));
}

TEST(NativeQuestionClassifier, holdsTextsToTheirLimits)
{
    const auto with = [](const Mutations& mutations) {
        return uniqueMatch(mutated(cardTree, mutations)).has_value();
    };
    EXPECT_TRUE(with(titled({std::string(4096, 'x')})));
    EXPECT_FALSE(with(titled({std::string(4097, 'x')})));
    EXPECT_TRUE(with(titled({times(15, "x\\n") + "x"})));
    EXPECT_FALSE(with(titled({times(16, "x\\n") + "x"})));

    const auto withLabel = [&](std::size_t bytes, std::size_t blanks) {
        const std::string label(bytes, 'x');
        return with(
            {"2 远程服务器 => 2" + std::string(blanks, ' ') + label, "远程服务器 => " + label});
    };
    EXPECT_TRUE(withLabel(1024, 75)); // The row's own text has 1100 bytes.
    EXPECT_FALSE(withLabel(1024, 76));
    EXPECT_FALSE(withLabel(1025, 1));
}

TEST(NativeQuestionClassifier, holdsTheWalkToItsLimits)
{
    const auto withBefore = [](const std::string& more) {
        return uniqueMatch(parseTree(more + cardTree)).has_value();
    };
    const auto images = "Group\n" + times(20000 - 1 - 22, "  Image\n");
    EXPECT_TRUE(withBefore(images));
    EXPECT_FALSE(withBefore(images + "  Image\n"));
    EXPECT_TRUE(withBefore(nested(129, 0, "Group"))); // The last at a depth of 128.
    EXPECT_FALSE(withBefore(nested(130, 0, "Group")));
}

TEST(NativeQuestionClassifier, seesControlsThatNoCardHas)
{
    EXPECT_FALSE(hasRecognizableQuestion({}));
    EXPECT_TRUE(hasRecognizableQuestion(
        parseTree("Window\n  Group -visible\n    Button -visible \"x\" \"上一题\"")));
    EXPECT_FALSE(hasRecognizableQuestion(
        parseTree("Window\n  StaticText \"上一题\"\n  Button \"上一题 \"")));
}

} // namespace
} // namespace notch
