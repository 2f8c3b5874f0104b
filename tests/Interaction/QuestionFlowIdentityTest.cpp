// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Interaction/QuestionFlowIdentity.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <tuple>

namespace notch {
namespace {

std::optional<std::string> scan(QuestionFlowIdentity& identity, char what)
{
    // The binding, the process, the title, the page and the number of pages.
    using Sighting = std::tuple<const char*, std::int32_t, const char*, int, int>;
    static const std::map<char, Sighting> sightings{{'1', {"b", 7, "t1", 1, 3}},
        {'2', {"b", 7, "t2", 2, 3}}, {'t', {"b", 7, "t3", 1, 3}}, {'b', {"c", 7, "t1", 1, 3}},
        {'p', {"b", 8, "t1", 1, 3}}, {'n', {"b", 7, "t1", 1, 4}}, {'!', {"b", 0, "t1", 1, 3}}};
    if (const auto seen = sightings.find(what); seen != sightings.end())
        return std::apply(
            std::bind_front(&QuestionFlowIdentity::identify, &identity), seen->second);
    if (what == '-')
        identity.observeAbsence();
    else if (what == '?')
        identity.observeUnavailable();
    else
        identity.reset();
    return std::nullopt;
}

TEST(QuestionFlowIdentity, keepsOneIdForOneCard)
{
    // A, B … for each id in order of appearance, - for none.
    const std::map<std::string, std::string> flowsOfScans{{"11", "AA"}, {"1212", "AAAA"},
        {"12t1", "AABC"}, {"1b", "AB"}, {"1p", "AB"}, {"1n", "AB"}, {"1-1-1", "A-A-A"},
        {"1--1", "A--B"}, {"1-?-1", "A---A"}, {"1-!-1", "A---A"}, {"1 1", "A-B"}};
    for (const auto& [scans, flows] : flowsOfScans) {
        QuestionFlowIdentity identity;
        std::map<std::string, char> names;
        std::string trace;
        for (const char sighting : scans) {
            const auto id = scan(identity, sighting);
            const auto next = static_cast<char>('A' + names.size());
            trace += id ? names.try_emplace(*id, next).first->second : '-';
        }
        EXPECT_EQ(trace, flows) << scans;
    }
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
