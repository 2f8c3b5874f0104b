// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Bridge/ApprovalAdmission.h"

#include "Bridge/Decision.h"

#include <functional>
#include <gtest/gtest.h>

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

struct Row {
    const char* name;
    std::function<void(ApprovalRequest&)> change;
};

TEST(ApprovalAdmission, refusesWhatNobodyMayBeAsked)
{
    for (const auto& row : {
             Row{"empty id", [](auto& request) { request.id.clear(); }},
             Row{"id that is no UUID", [](auto& request) { request.id.back() = 'G'; }},
             Row{"id with a byte behind it", [](auto& request) { request.id += '0'; }},
             Row{"other event", [](auto& request) { request.eventName = "PreToolUse"; }},
             Row{"event in other case",
                 [](auto& request) { request.eventName = "permissionRequest"; }},
             Row{"event of a native card",
                 [](auto& request) { request.eventName = "NativeApproval"; }},
             Row{"question tool", [](auto& request) { request.toolName = "ask_user_question"; }},
             Row{"question tool in other case",
                 [](auto& request) { request.toolName = "ExitPlanMode"; }},
             Row{"lapsed", [](auto& request) { request.expiresAt = now + Seconds{-1}; }},
             Row{"lapses now", [](auto& request) { request.expiresAt = now; }},
             Row{"input is an array", [](auto& request) { request.toolInputJSON = "[]"; }},
             Row{"input is no JSON", [](auto& request) { request.toolInputJSON = "{"; }},
             Row{"input is empty", [](auto& request) { request.toolInputJSON.clear(); }},
             Row{"input with text behind it", [](auto& request) { request.toolInputJSON += "x"; }},
             Row{"input is no UTF-8",
                 [](auto& request) { request.toolInputJSON = "{\"a\":\"\xFF\"}"; }},
         }) {
        auto request = goodRequest();
        row.change(request);
        EXPECT_FALSE(admittedRequest(request.serialize(), now)) << row.name;
    }
}

TEST(ApprovalAdmission, admitsWhatIsUnusualButHarmless)
{
    for (const auto& row : {
             Row{"as it is", [](auto&) {}},
             Row{"lower case id",
                 [](auto& request) { request.id = "0d9f2f6c-1d6e-4e57-9c1b-0a1b2c3d4e5f"; }},
             Row{"unknown edition", [](auto& request) { request.source = "汉字"; }},
             Row{"empty texts",
                 [](auto& request) {
                     request.sessionID.clear();
                     request.cwd.clear();
                     request.source.clear();
                     request.toolName.clear();
                 }},
             Row{"empty input object", [](auto& request) { request.toolInputJSON = "{}"; }},
             Row{"fraction of a second left",
                 [](auto& request) { request.expiresAt = now + Seconds{0.000001}; }},
             Row{"exactly its longest life",
                 [](auto& request) { request.expiresAt = now + Seconds{50}; }},
         }) {
        auto request = goodRequest();
        row.change(request);
        EXPECT_EQ(admittedRequest(request.serialize(), now), request) << row.name;
    }
}

TEST(ApprovalAdmission, cutsAnExpiryThatIsTooFarAhead)
{
    for (const auto ahead : {Seconds{50.1}, Seconds{600}, Seconds{1e300}}) {
        auto request = goodRequest();
        request.expiresAt = now + ahead;
        const auto admitted = admittedRequest(request.serialize(), now);
        ASSERT_TRUE(admitted);
        EXPECT_EQ(admitted->expiresAt, now + Seconds{50});
    }
}

TEST(ApprovalAdmission, demandsEveryFieldInItsType)
{
    const auto line = goodRequest().serialize();
    const std::string_view fields[] = {
        "id", "sessionID", "toolName", "toolInputJSON", "cwd", "eventName", "expiresAt", "source"};
    for (const auto field : fields) {
        const auto at = line.find("\"" + std::string(field) + "\":");
        ASSERT_NE(at, std::string::npos) << field;
        auto renamed = line;
        renamed[at + 1] = 'X';
        EXPECT_FALSE(admittedRequest(renamed, now)) << field;
        auto otherType = line;
        otherType.insert(at + field.size() + 3, "null,\"x\":");
        EXPECT_FALSE(admittedRequest(otherType, now)) << field;
    }
}

// Whatever is damaged on the way, what is admitted is a whole request that obeys every rule.
TEST(ApprovalAdmission, survivesEveryDamage)
{
    const auto line = goodRequest().serialize();
    const auto check = [&](const std::string& damaged) {
        const auto admitted = admittedRequest(damaged, now);
        if (!admitted)
            return;
        EXPECT_EQ(admitted->eventName, "PermissionRequest") << damaged;
        EXPECT_LE(admitted->expiresAt, now + Seconds{50}) << damaged;
        EXPECT_EQ(admittedRequest(admitted->serialize(), now), admitted) << damaged;
    };
    for (std::size_t at = 0; at < line.size(); ++at) {
        EXPECT_FALSE(admittedRequest(line.substr(0, at), now)) << at;
        for (int bit = 0; bit < 8; ++bit) {
            auto damaged = line;
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
            check(damaged);
        }
    }
}

TEST(ApprovalRequest, keepsEveryBitOfItsExpiry)
{
    auto request = goodRequest();
    for (const double seconds : {785523422.8459001, 0.1, -1.5, 1e300}) {
        request.expiresAt = Date{seconds};
        EXPECT_EQ(ApprovalRequest::parse(request.serialize()), request) << seconds;
    }
}

TEST(DecisionReply, carriesKnownWordsOnly)
{
    for (const auto decision : allDecisions) {
        const DecisionReply reply{.id = "a", .decision = decision};
        EXPECT_EQ(DecisionReply::parse(reply.serialize()), reply) << name(decision);
    }
    for (const char* line :
        {R"({"id":"a","decision":"maybe"})", R"({"id":"a","decision":"Allow"})", R"({"id":"a"})",
            R"({"decision":"allow"})", R"({"id":1,"decision":"allow"})", "[]", ""})
        EXPECT_FALSE(DecisionReply::parse(line)) << line;
}

} // namespace
} // namespace notch
