// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "TurnEnd/CompletionEvent.h"

#include "support/CompletionEvents.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace notch {
namespace {

using namespace std::string_literals;

constexpr Date now{785523422.8459};

struct Row {
    std::string input;
    std::string event; // As printed() writes it; empty for no event.
};

// A hook's input with these members after the required ones.
std::string start(const std::string& members = {})
{
    return R"({"hook_event_name":"UserPromptSubmit","session_id":"s")" + members + "}";
}

std::string end(const std::string& members)
{
    return R"({"hook_event_name":"FinalStop","session_id":"s")" + members + "}";
}

std::string stop(const std::string& reason)
{
    return end(R"(,"final_stop_reason":)" + reason);
}

// The largest input and these bytes more.
std::string largest(std::size_t more = 0)
{
    return start() + std::string(CompletionEvent::maximumHookInput + more - start().size(), ' ');
}

std::string printedOrEmpty(const std::optional<CompletionEvent>& event)
{
    return event ? printed(*event) : "";
}

TEST(CompletionEvent, readsTheHooksOfTopLevelTurnsAndNothingElse)
{
    for (const auto& row : std::vector<Row>{
             {start(), "started session=s"},
             {start(R"(,"generation_id":"g","agent_id":"a")"),
                 "started session=s generation=g agent=a"},
             {start(R"(,"prompt":"rm -rf /","x":[{}])"), "started session=s"},
             {start(R"(,"final_stop_reason":"failed")"), "started session=s"},
             {end(""), "ended session=s reason=unknown"},
             {stop(R"(["completed"])"), "ended session=s reason=unknown"},
             {stop(R"("Completed")"), "ended session=s reason=unknown"},
             {stop(R"("completed")"), "ended session=s reason=completed"},
             {start(R"(,"is_subagent":false)"), "started session=s"},
             {start(R"(,"is_subagent":null)"), "started session=s"},
             {largest(), "started session=s"},
             {largest(1), ""},
             {"[" + start() + "]", ""},
             {R"({"session_id":"s"})", ""},
             {R"({"hook_event_name":"finalStop","session_id":"s"})", ""},
             {R"({"hook_event_name":"FinalStop"})", ""},
             {R"({"hook_event_name":"FinalStop","session_id":"a b"})", ""},
             {start(R"(,"generation_id":null)"), ""},
             {start(R"(,"generation_id":"a/b")"), ""},
             {start(R"(,"agent_id":"")"), ""},
             {start(R"(,"subagent_type":null)"), ""},
             {start(R"(,"parent_session_id":false)"), ""},
             {start(R"(,"is_subagent":true)"), ""},
             {start(R"(,"is_subagent":0)"), ""},
             {start(R"(,"is_subagent":"false")"), ""},
         })
        EXPECT_EQ(printedOrEmpty(CompletionEvent::decodeHook(row.input, now)), row.event)
            << row.input.substr(0, 200);
}

TEST(CompletionEvent, isDatedAndNamedByTheHook)
{
    const auto event = CompletionEvent::decodeHook(end(""), now).value();
    EXPECT_TRUE(event.isValid());
    EXPECT_EQ(event.observedAt, now);
    EXPECT_EQ(UUID::parse(event.id).value().text(), event.id);
    EXPECT_NE(CompletionEvent::decodeHook(end(""), now)->id, event.id);
    EXPECT_FALSE(CompletionEvent::decodeHook(end(""), {std::nan("")}));
    EXPECT_FALSE(CompletionEvent::decodeHook(end(""), {std::numeric_limits<double>::infinity()}));
}

TEST(CompletionEvent, takesOnlyPlainShortTokens)
{
    EXPECT_TRUE(CompletionEvent::safeToken(std::string(256, 'a')));
    EXPECT_FALSE(CompletionEvent::safeToken(std::string(257, 'a')));
    EXPECT_FALSE(CompletionEvent::safeToken(""));
    for (int code = 0; code < 256; ++code) {
        const bool safe = "-.:_"s.find(static_cast<char>(code)) != std::string::npos
                       || (code < 128 && std::isalnum(code));
        EXPECT_EQ(CompletionEvent::safeToken("a"s + static_cast<char>(code)), safe) << code;
    }
}

CompletionEvent fullEvent()
{
    return {.id = "A1B2C3D4-0000-4000-8000-00000000000F",
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

    const CompletionEvent bare{.id = "i", .sessionID = "s", .observedAt = {1.5}};
    EXPECT_EQ(bare.serialize(), R"({"id":"i","kind":"started","observedAt":1.5,"sessionID":"s"})");
    EXPECT_EQ(CompletionEvent::parse(bare.serialize()), bare);
}

TEST(CompletionEvent, parsesOnlyWellFormedRecords)
{
    for (const auto& row :
        std::vector<Row>{
            {R"("id":"i","sessionID":"s","kind":"ended","observedAt":1,"reason":null,"agentID":null)",
                "ended session=s"},
            {R"("id":"i","sessionID":"s","kind":"ended")", ""},
            {R"("id":"i","sessionID":"s","kind":"ended","observedAt":"1")", ""},
            {R"("id":"i","sessionID":"s","observedAt":1)", ""},
            {R"("id":"i","sessionID":"s","kind":"Ended","observedAt":1)", ""},
            {R"("id":"i","kind":"ended","observedAt":1)", ""},
            {R"("sessionID":"s","kind":"ended","observedAt":1)", ""},
            {R"("id":"i","sessionID":"s","kind":"ended","observedAt":1,"reason":"done")", ""},
            {R"("id":"i","sessionID":"s","kind":"ended","observedAt":1,"agentID":7)", ""},
        })
        EXPECT_EQ(printedOrEmpty(CompletionEvent::parse("{" + row.input + "}")), row.event)
            << row.input;
}

TEST(CompletionEvent, isValidOnlyWithSafeFields)
{
    struct Change {
        void (*apply)(CompletionEvent&);
        bool valid;
    };
    for (const auto& change : {
             Change{[](auto& event) { event.reason.reset(); }, true},
             Change{[](auto& event) { event.kind = CompletionEvent::Kind::started; }, false},
             Change{[](auto& event) { event.id.pop_back(); }, false},
             Change{[](auto& event) { event.sessionID.clear(); }, false},
             Change{[](auto& event) { event.generationID = "g\n"; }, false},
             Change{[](auto& event) { event.agentID = "\xC3\xA9"; }, false},
             Change{[](auto& event) { event.observedAt.seconds = INFINITY; }, false},
         }) {
        auto event = fullEvent();
        EXPECT_TRUE(event.isValid());
        change.apply(event);
        EXPECT_EQ(event.isValid(), change.valid) << printed(event) << event.id;
    }
}

TEST(CompletionEvent, isFreshForThreeSeconds)
{
    const auto event = fullEvent();
    for (const auto& [age, fresh] :
        {std::pair{-0.001, false}, {0.0, true}, {3.0, true}, {3.001, false}, {std::nan(""), false}})
        EXPECT_EQ(event.isFresh(now + Seconds{age}), fresh) << age;
}

} // namespace
} // namespace notch
