// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionFlowIdentity.h"

#include "Rehearsal/TracePlayer.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace notch {
namespace {

// Plays scans: page NUMBER [titled WORD] [bound WORD] [process NUMBER] [of NUMBER], absent,
// unreadable, reset. Tells which flow each page was said to be of, by letters in the order of
// appearance, or "none".
class FlowPlayer final : public TracePlayer {
public:
    FlowPlayer()
    {
        operations_ = {
            {"page", [this] { answer(scan()); }},
            {"absent", [this] { identity_.observeAbsence(); }},
            {"unreadable", [this] { identity_.observeUnavailable(); }},
            {"reset", [this] { identity_.reset(); }},
        };
    }

private:
    std::string scan()
    {
        const auto page = next<int>();
        std::map<std::string, std::string> given{{"titled", "title" + std::to_string(page)},
            {"bound", "card"}, {"process", "7"}, {"of", "3"}};
        while (const auto what = more())
            given.at(*what) = next();
        const auto id = identity_.identify(given["bound"], std::stoi(given["process"]),
            given["titled"], page, std::stoi(given["of"]));
        const std::string letter(1, static_cast<char>('A' + names_.size()));
        return id ? names_.try_emplace(*id, letter).first->second : "none";
    }
    std::string stateText() override { return "."; }

    QuestionFlowIdentity identity_;
    std::map<std::string, std::string> names_;
};

TEST(QuestionFlowIdentity, keepsOneIdForOneCard)
{
    const std::string trace =
        R"(page 1, page 1, page 2, page 1, page 2                    | A  A  A  A  A  .
page 1 titled other, page 1 titled other, page 1          | B  B  C  .
page 1 bound elsewhere, page 1 bound elsewhere            | D  D  .
page 1 bound elsewhere process 8                          | E  .
page 1 bound elsewhere process 8 of 4, page 2             | F  G  .
absent, page 2, absent, page 2                            | G  G  .
absent, unreadable, absent, page 2                        | G  .
absent, page 2 process 0, absent, page 2                  | none  G  .
absent, absent, page 2                                    | H  .
reset, page 2                                             | I  .
)";
    EXPECT_EQ(FlowPlayer().played(trace), trace);
}

TEST(QuestionFlowIdentity, refusesAMalformedSighting)
{
    const auto accepts = [](const std::string& binding, const std::string& title,
                             std::int32_t pid = 1, int page = 1, int pages = 1) {
        return QuestionFlowIdentity().identify(binding, pid, title, page, pages).has_value();
    };
    EXPECT_TRUE(accepts("b", "t", 1, 100, 100));
    EXPECT_FALSE(accepts("b", "t", 0));
    EXPECT_FALSE(accepts("b", "t", 1, 1, 101));
    EXPECT_FALSE(accepts("b", "t", 1, 0, 1));
    EXPECT_FALSE(accepts("b", "t", 1, 2, 1));
    EXPECT_TRUE(accepts(std::string(1024, 'b'), std::string(8192, 't')));
    EXPECT_FALSE(accepts(std::string(1025, 'b'), "t"));
    EXPECT_FALSE(accepts("b", std::string(8193, 't')));
    EXPECT_FALSE(accepts(" ", "t"));
    EXPECT_FALSE(accepts("b", "\u3000"));
    for (const std::string inTitlesOnly : {"\t", "\n", "\r", "\u200C", "\u200D"}) {
        EXPECT_TRUE(accepts("b", "t" + inTitlesOnly + "t"));
        EXPECT_FALSE(accepts("b" + inTitlesOnly + "b", "t"));
    }
    for (const auto& nowhere :
        {std::string(1, '\0'), std::string("\u200B"), std::string("\x7F"), std::string("\xC3")})
        EXPECT_FALSE(accepts("b", "t" + nowhere + "t"));
}

} // namespace
} // namespace notch
