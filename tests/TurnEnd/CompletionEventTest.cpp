// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionEvent.h"

#include "Foundation/UUID.h"
#include "support/CompletionEvents.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace notch {
namespace {

using namespace std::string_literals;

constexpr Date now{785523422.8459};
const std::string id = "A1B2C3D4-0000-4000-8000-00000000000F";

struct Row {
    const char* name;
    std::string input;
    std::string event; // As printed() writes it; empty for no event.
};

// A hook's input with these members behind the required ones.
std::string start(const std::string& members)
{
    return R"({"hook_event_name":"UserPromptSubmit","session_id":"s")" + members + "}";
}

std::string end(const std::string& members)
{
    return R"({"hook_event_name":"FinalStop","session_id":"s")" + members + "}";
}

std::string startOf(const std::string& session)
{
    return R"({"hook_event_name":"UserPromptSubmit","session_id":)" + session + "}";
}

std::string paddedTo(std::string text, std::size_t size)
{
    text.resize(size, ' ');
    return text;
}

void expectHookEvents(const std::vector<Row>& rows)
{
    for (const auto& row : rows) {
        const auto event = CompletionEvent::decodeHook(row.input, now);
        EXPECT_EQ(event ? printed(*event) : "", row.event) << row.name;
    }
}

TEST(CompletionEvent, readsTheHooksOfTopLevelTurns)
{
    expectHookEvents({
        {"start", start(""), "started session=s"},
        {"start with everything", start(R"(,"generation_id":"g","agent_id":"a")"),
            "started session=s generation=g agent=a"},
        {"unknown keys", start(R"(,"prompt":"rm -rf /","x":[{}])"), "started session=s"},
        {"start ignores a reason", start(R"(,"final_stop_reason":"failed")"), "started session=s"},
        {"end without a reason", end(""), "ended session=s reason=unknown"},
        {"end with a reason of another type", end(R"(,"final_stop_reason":["completed"])"),
            "ended session=s reason=unknown"},
        {"end with an unknown word", end(R"(,"final_stop_reason":"Completed")"),
            "ended session=s reason=unknown"},
        {"completed", end(R"(,"final_stop_reason":"completed")"),
            "ended session=s reason=completed"},
        {"interrupted", end(R"(,"final_stop_reason":"interrupted")"),
            "ended session=s reason=interrupted"},
        {"cancelled", end(R"(,"final_stop_reason":"cancelled")"),
            "ended session=s reason=cancelled"},
        {"failed", end(R"(,"final_stop_reason":"failed")"), "ended session=s reason=failed"},
        {"marked as no subagent", start(R"(,"is_subagent":false)"), "started session=s"},
        {"subagent mark of null", start(R"(,"is_subagent":null)"), "started session=s"},
        {"largest input", paddedTo(start(""), CompletionEvent::maximumHookInput),
            "started session=s"},
    });
}

TEST(CompletionEvent, makesNothingOfOtherHookInput)
{
    expectHookEvents({
        {"no bytes", "", ""},
        {"no JSON", "UserPromptSubmit", ""},
        {"array", "[" + start("") + "]", ""},
        {"empty object", "{}", ""},
        {"two objects", start("") + start(""), ""},
        {"cut short", start("").substr(0, start("").size() - 1), ""},
        {"input one byte too long", paddedTo(start(""), CompletionEvent::maximumHookInput + 1), ""},
        {"no event name", R"({"session_id":"s"})", ""},
        {"event name of another type", R"({"hook_event_name":["FinalStop"],"session_id":"s"})", ""},
        {"event name in another case", R"({"hook_event_name":"finalStop","session_id":"s"})", ""},
        {"other event", R"({"hook_event_name":"Stop","session_id":"s"})", ""},
        {"no session", R"({"hook_event_name":"FinalStop"})", ""},
        {"session of another type", startOf("7"), ""},
        {"empty session", startOf(R"("")"), ""},
        {"session with a blank", startOf(R"("a b")"), ""},
        {"generation of null", start(R"(,"generation_id":null)"), ""},
        {"generation of another type", start(R"(,"generation_id":1)"), ""},
        {"unsafe generation", start(R"(,"generation_id":"a/b")"), ""},
        {"unsafe agent", start(R"(,"agent_id":"")"), ""},
        {"subagent type", start(R"(,"subagent_type":null)"), ""},
        {"parent session", start(R"(,"parent_session_id":false)"), ""},
        {"subagent", start(R"(,"is_subagent":true)"), ""},
        {"subagent mark of 0", start(R"(,"is_subagent":0)"), ""},
        {"subagent mark in words", start(R"(,"is_subagent":"false")"), ""},
        {"the last of two marks holds", start(R"(,"is_subagent":false,"is_subagent":true)"), ""},
    });
}

TEST(CompletionEvent, isDatedAndNamedByTheHook)
{
    const auto event = CompletionEvent::decodeHook(end(""), now);
    ASSERT_TRUE(event);
    EXPECT_TRUE(event->isValid());
    EXPECT_EQ(event->observedAt, now);
    EXPECT_EQ(UUID::parse(event->id).value().text(), event->id);
    EXPECT_NE(CompletionEvent::decodeHook(end(""), now)->id, event->id);
    EXPECT_FALSE(CompletionEvent::decodeHook(end(""), {std::nan("")}));
    EXPECT_FALSE(CompletionEvent::decodeHook(end(""), {std::numeric_limits<double>::infinity()}));
}

TEST(CompletionEvent, takesOnlyPlainShortTokens)
{
    EXPECT_TRUE(CompletionEvent::safeToken("AZaz09-.:_"));
    EXPECT_TRUE(CompletionEvent::safeToken(std::string(256, 'a')));
    EXPECT_FALSE(CompletionEvent::safeToken(std::string(257, 'a')));
    EXPECT_FALSE(CompletionEvent::safeToken(""));
    for (int code = 0; code < 256; ++code) {
        const bool safe =
            std::string_view("-.:_").find(static_cast<char>(code)) != std::string::npos
            || (code < 128 && std::isalnum(code));
        EXPECT_EQ(CompletionEvent::safeToken("a"s + static_cast<char>(code)), safe) << code;
    }
}

CompletionEvent fullEvent()
{
    return {.id = id,
        .sessionID = "s",
        .generationID = "g",
        .agentID = "a",
        .kind = CompletionEvent::Kind::ended,
        .reason = CompletionEvent::Reason::completed,
        .observedAt = now};
}

TEST(CompletionEvent, crossesTheWireUnchanged)
{
    auto event = fullEvent();
    for (const auto reason : allCompletionReasons) {
        event.reason = reason;
        EXPECT_EQ(CompletionEvent::parse(event.serialize()), event) << name(reason);
    }
    EXPECT_EQ(event.serialize(),
        R"({"agentID":"a","generationID":"g","id":"A1B2C3D4-0000-4000-8000-00000000000F",)"
        R"("kind":"ended","observedAt":785523422.8459,"reason":"failed","sessionID":"s"})");

    const CompletionEvent bare{.id = id, .sessionID = "s", .observedAt = {1.5}};
    EXPECT_EQ(bare.serialize(), R"({"id":"A1B2C3D4-0000-4000-8000-00000000000F","kind":"started",)"
                                R"("observedAt":1.5,"sessionID":"s"})");
    EXPECT_EQ(CompletionEvent::parse(bare.serialize()), bare);
}

TEST(CompletionEvent, parsesOnlyWellFormedRecords)
{
    const auto line = [](const std::string& members) {
        return R"({"id":"i","sessionID":"s")" + members + "}";
    };
    for (const auto& row : std::vector<Row>{
             {"optional fields of null",
                 line(R"(,"kind":"ended","observedAt":1,"reason":null,"agentID":null)"),
                 "ended session=s"},
             {"no date", line(R"(,"kind":"ended")"), ""},
             {"date as a text", line(R"(,"kind":"ended","observedAt":"1")"), ""},
             {"no kind", line(R"(,"observedAt":1)"), ""},
             {"unknown kind", line(R"(,"kind":"Ended","observedAt":1)"), ""},
             {"no session", R"({"id":"i","kind":"ended","observedAt":1})", ""},
             {"no id", R"({"sessionID":"s","kind":"ended","observedAt":1})", ""},
             {"unknown reason", line(R"(,"kind":"ended","observedAt":1,"reason":"done")"), ""},
             {"agent of another type", line(R"(,"kind":"ended","observedAt":1,"agentID":7)"), ""},
             {"empty line", "", ""},
         }) {
        const auto event = CompletionEvent::parse(row.input);
        EXPECT_EQ(event ? printed(*event) : "", row.event) << row.name;
    }
}

TEST(CompletionEvent, isValidOnlyWithSafeFields)
{
    struct Change {
        const char* name;
        void (*apply)(CompletionEvent&);
        bool valid;
    };
    for (const auto& change : {
             Change{"nothing", [](auto&) {}, true},
             Change{"end without a reason", [](auto& event) { event.reason.reset(); }, true},
             Change{"start with a reason",
                 [](auto& event) { event.kind = CompletionEvent::Kind::started; }, false},
             Change{"id in lower case",
                 [](auto& event) { event.id = "a1b2c3d4-0000-4000-8000-00000000000f"; }, true},
             Change{"id that is no UUID", [](auto& event) { event.id.pop_back(); }, false},
             Change{"empty session", [](auto& event) { event.sessionID.clear(); }, false},
             Change{"generation with a line feed", [](auto& event) { event.generationID = "g\n"; },
                 false},
             Change{"agent with a letter beyond ASCII",
                 [](auto& event) { event.agentID = "\xC3\xA9"; }, false},
             Change{
                 "infinite date", [](auto& event) { event.observedAt.seconds = INFINITY; }, false},
         }) {
        auto event = fullEvent();
        change.apply(event);
        EXPECT_EQ(event.isValid(), change.valid) << change.name;
    }
}

} // namespace
} // namespace notch
