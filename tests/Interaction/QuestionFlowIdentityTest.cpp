// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionFlowIdentity.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace notch {
namespace {

TEST(QuestionFlowIdentity, keepsOneIdForOneCard)
{
    struct Sighting {
        const char* what; // "absent", "unavailable", "reset", or the binding
        std::int32_t pid = 7;
        const char* title = "t1";
        int page = 1;
        int pages = 3;
    };
    struct Row {
        const char* name;
        std::vector<Sighting> sightings;
        const char* flows; // A, B … for each id in order of appearance, - for none
    };
    for (const auto& [name, sightings, flows] : {
             Row{"same page", {{"b"}, {"b"}}, "AA"},
             Row{"pages back and forth", {{"b"}, {"b", 7, "t2", 2}, {"b"}, {"b", 7, "t2", 2}},
                 "AAAA"},
             Row{"other title on a page seen", {{"b"}, {"b", 7, "t2", 2}, {"b", 7, "x"}, {"b"}},
                 "AABC"},
             Row{"other binding", {{"b"}, {"c"}}, "AB"},
             Row{"other process", {{"b"}, {"b", 8}}, "AB"},
             Row{"other number of pages", {{"b"}, {"b", 7, "t1", 1, 4}}, "AB"},
             Row{"one absence", {{"b"}, {"absent"}, {"b"}, {"absent"}, {"b"}}, "A-A-A"},
             Row{"two absences", {{"b"}, {"absent"}, {"absent"}, {"b"}}, "A--B"},
             Row{"unreadable between absences",
                 {{"b"}, {"absent"}, {"unavailable"}, {"absent"}, {"b"}}, "A---A"},
             Row{"refused between absences", {{"b"}, {"absent"}, {"b", 0}, {"absent"}, {"b"}},
                 "A---A"},
             Row{"reset", {{"b"}, {"reset"}, {"b"}}, "A-B"},
         }) {
        QuestionFlowIdentity identity;
        std::map<std::string, char> names;
        std::string trace;
        for (const auto& seen : sightings) {
            const std::string what = seen.what;
            std::optional<std::string> id;
            if (what == "absent")
                identity.observeAbsence();
            else if (what == "unavailable")
                identity.observeUnavailable();
            else if (what == "reset")
                identity.reset();
            else
                id = identity.identify(what, seen.pid, seen.title, seen.page, seen.pages);
            const auto next = static_cast<char>('A' + names.size());
            trace += id ? names.try_emplace(*id, next).first->second : '-';
        }
        EXPECT_EQ(trace, flows) << name;
    }
}

TEST(QuestionFlowIdentity, refusesAMalformedSighting)
{
    const auto accepts = [](const std::string& binding, std::int32_t pid, const std::string& title,
                             int page, int pages) {
        return QuestionFlowIdentity().identify(binding, pid, title, page, pages).has_value();
    };
    EXPECT_TRUE(accepts("b", 1, "t", 100, 100));
    EXPECT_FALSE(accepts("b", 0, "t", 1, 1));
    EXPECT_FALSE(accepts("b", 1, "t", 1, 101));
    EXPECT_FALSE(accepts("b", 1, "t", 0, 1));
    EXPECT_FALSE(accepts("b", 1, "t", 2, 1));
    EXPECT_TRUE(accepts(std::string(1024, 'b'), 1, "t", 1, 1));
    EXPECT_FALSE(accepts(std::string(1025, 'b'), 1, "t", 1, 1));
    EXPECT_TRUE(accepts("b", 1, std::string(8192, 't'), 1, 1));
    EXPECT_FALSE(accepts("b", 1, std::string(8193, 't'), 1, 1));
    EXPECT_FALSE(accepts(" ", 1, "t", 1, 1));
    EXPECT_FALSE(accepts("b", 1, "\u3000", 1, 1));
    for (const std::string inTitlesOnly : {"\t", "\n", "\r", "\u200C", "\u200D"}) {
        EXPECT_TRUE(accepts("b", 1, "t" + inTitlesOnly + "t", 1, 1));
        EXPECT_FALSE(accepts("b" + inTitlesOnly + "b", 1, "t", 1, 1));
    }
    for (const auto& nowhere :
        {std::string(1, '\0'), std::string("\u200B"), std::string("\x7F"), std::string("\xC3")})
        EXPECT_FALSE(accepts("b", 1, "t" + nowhere + "t", 1, 1));
}

} // namespace
} // namespace notch
