// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalAdmission.h"

#include "Bridge/Decision.h"

#include <gtest/gtest.h>
#include <string>

namespace notch {
namespace {

constexpr Date now{785000000.25};

ApprovalRequest goodRequest()
{
    return {
        .id = "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5F",
        .sessionID = "session",
        .toolName = "Bash",
        .toolInputJSON = R"({"command" : "ls"})",
        .cwd = "/home/a",
        .eventName = "PermissionRequest",
        .expiresAt = now + Seconds{20},
        .source = "quillmoss",
    };
}

template <class Field> ApprovalRequest with(Field ApprovalRequest::*field, const std::string& text)
{
    auto request = goodRequest();
    request.*field = text;
    return request;
}

TEST(ApprovalAdmission, admitsTheUnusual)
{
    using Request = ApprovalRequest;
    for (const auto& request : {goodRequest(), with(&Request::toolName, ""),
             with(&Request::id, "0d9f2f6c-1d6e-4e57-9c1b-0a1b2c3d4e5f"),
             with(&Request::sessionID, ""), with(&Request::cwd, ""), with(&Request::source, "汉"),
             with(&Request::toolInputJSON, "{}"),
             with(&Request::toolInputJSON, R"( {"a":[1,{"b":null}],"a":2} )")})
        EXPECT_EQ(admittedRequest(request.serialize(), now), request) << request.serialize();
    auto nested = goodRequest().serialize();
    nested.insert(1, R"("x":{"id":1,"y":[{}]},)");
    EXPECT_EQ(admittedRequest(nested, now), goodRequest());
}

TEST(ApprovalAdmission, refusesWhatNobodyMayBeAsked)
{
    using Request = ApprovalRequest;
    for (const auto& request : {with(&Request::id, "0D9F2F6C-1D6E-4E57-9C1B-0A1B2C3D4E5G"),
             with(&Request::eventName, "NativeApproval"),
             with(&Request::toolName, "ask_user_question"), with(&Request::toolInputJSON, "[]"),
             with(&Request::toolInputJSON, "{}x"), with(&Request::toolInputJSON, ""),
             with(&Request::toolInputJSON, R"({"a":[1,{"b":nul}]})"),
             with(&Request::toolInputJSON, "{\"a\":[\"\xFF\"]}")})
        EXPECT_FALSE(admittedRequest(request.serialize(), now)) << request.serialize();
}

TEST(ApprovalAdmission, refusesALapsedRequestAndCutsAnExpiryThatIsTooFarAhead)
{
    const auto admittedExpiry = [](double ahead) {
        auto request = goodRequest();
        request.expiresAt = now + Seconds{ahead};
        const auto admitted = admittedRequest(request.serialize(), now);
        return admitted ? std::optional(admitted->expiresAt) : std::nullopt;
    };
    for (const double ahead : {-1.0, 0.0})
        EXPECT_EQ(admittedExpiry(ahead), std::nullopt) << ahead;
    for (const double ahead : {0.000001, 50.0})
        EXPECT_EQ(admittedExpiry(ahead), now + Seconds{ahead}) << ahead;
    for (const double ahead : {50.1, 1e300})
        EXPECT_EQ(admittedExpiry(ahead), now + Seconds{50}) << ahead;
    auto endless = goodRequest().serialize();
    endless.insert(endless.find(',', endless.find("expiresAt")), "e999");
    EXPECT_FALSE(admittedRequest(endless, now)) << endless;
}

TEST(ApprovalAdmission, demandsEveryFieldInItsType)
{
    const auto line = goodRequest().serialize();
    for (const std::string field : {"id", "sessionID", "toolName", "toolInputJSON", "cwd",
             "eventName", "expiresAt", "source"}) {
        const auto at = line.find("\"" + field + "\":");
        ASSERT_NE(at, std::string::npos) << field;
        auto renamed = line;
        renamed[at + 1] = 'X';
        EXPECT_FALSE(admittedRequest(renamed, now)) << field;
        auto otherType = line;
        otherType.insert(at + field.size() + 3, "null,\"x\":");
        EXPECT_FALSE(admittedRequest(otherType, now)) << field;
    }
}

std::string damaged(std::string text, std::size_t bit)
{
    text[bit / 8] = static_cast<char>(text[bit / 8] ^ (1 << bit % 8));
    return text;
}

// Whatever is damaged on the way, what is admitted is a whole request that obeys every rule.
TEST(ApprovalAdmission, survivesEveryDamage)
{
    const auto line = goodRequest().serialize();
    for (std::size_t at = 0; at < line.size(); ++at)
        EXPECT_FALSE(admittedRequest(line.substr(0, at), now)) << at;
    for (std::size_t bit = 0; bit < line.size() * 8; ++bit) {
        const auto admitted = admittedRequest(damaged(line, bit), now);
        if (!admitted)
            continue;
        EXPECT_EQ(admitted->eventName, "PermissionRequest") << bit;
        EXPECT_LE(admitted->expiresAt, now + Seconds{50}) << bit;
        EXPECT_EQ(admittedRequest(admitted->serialize(), now), admitted) << bit;
    }
}

TEST(DecisionReply, carriesKnownWordsOnly)
{
    for (const auto decision : allDecisions) {
        const DecisionReply reply{.id = "a", .decision = decision};
        EXPECT_EQ(DecisionReply::parse(reply.serialize()), reply) << name(decision);
    }
    for (const char* line : {R"({"id":"a","decision":"maybe"})", R"({"id":"a","decision":"Allow"})",
             R"({"id":"a","decision":"allowed"})", R"({"id":"a"})", R"({"decision":"allow"})",
             R"({"id":1,"decision":"allow"})", "[]"})
        EXPECT_FALSE(DecisionReply::parse(line)) << line;
}

TEST(DecisionReply, allowsNothingWhenADenialIsDamaged)
{
    const auto denial = DecisionReply{.id = "a", .decision = Decision::deny}.serialize();
    for (std::size_t bit = 0; bit < denial.size() * 8; ++bit) {
        const auto reply = DecisionReply::parse(damaged(denial, bit));
        EXPECT_FALSE(reply && reply->decision != Decision::deny) << bit;
    }
}

} // namespace
} // namespace notch
