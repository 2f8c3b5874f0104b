// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace notch {

// A JSON number as it was written, so that reading and writing it loses nothing, also beyond 64
// bits or the range of a double.
class JsonNumber {
public:
    // `text` is a JSON number as RFC 8259 writes it.
    explicit JsonNumber(std::string text)
        : text_(std::move(text))
    {
    }
    explicit JsonNumber(std::int64_t value);
    // Shortest text that reads back as the same double. `value` must be finite.
    explicit JsonNumber(double value);

    const std::string& text() const { return text_; }
    // The nearest double; infinite beyond its range.
    double toDouble() const;

    // By value: 60 equals 60.0 and 6e1, -0.0 equals 0.
    friend bool operator==(const JsonNumber& a, const JsonNumber& b);

private:
    std::string text_;
};

// One JSON value (RFC 8259).
//
//   const auto document = Json::parse(bytes);
//   if (const auto* name = document ? document->string("tool_name") : nullptr) …
//
// Reading is strict: UTF-8 without a byte order mark, no comments, no trailing text, nesting up to
// maximumDepth. The last of equal keys wins. No input makes it throw, recurse deeply or crash;
// writing and destroying a value do not recurse either.
// One thing that the standard permits is refused: an exponent beyond 32 bits.
class Json {
public:
    using Array = std::vector<Json>;
    using Object = std::map<std::string, Json, std::less<>>; // Keys in the order of their bytes.

    static constexpr std::size_t maximumDepth = 512;

    Json() = default; // null
    // Only a true bool: an int or a pointer must not become one.
    template <std::same_as<bool> Bool>
    Json(Bool value)
        : value_(value)
    {
    }
    Json(JsonNumber number)
        : value_(std::move(number))
    {
    }
    Json(std::string text)
        : value_(std::move(text))
    {
    }
    Json(std::string_view text)
        : value_(std::string(text))
    {
    }
    Json(const char* text)
        : value_(std::string(text))
    {
    }
    Json(Array array)
        : value_(std::move(array))
    {
    }
    Json(Object object)
        : value_(std::move(object))
    {
    }

    Json(const Json&) = default;
    Json(Json&&) noexcept = default;
    Json& operator=(const Json&) = default;
    Json& operator=(Json&&) noexcept = default;
    ~Json();

    static std::optional<Json> parse(std::string_view text);
    // Checks the whole text but builds only its outer levels: what lies further in is left out of
    // its container. Level 0 is the value itself. A hostile text fills thirty times its size when
    // it is built.
    static std::optional<Json> parseOutline(std::string_view text, std::size_t levels);

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    // Null when the value is of another type.
    const bool* boolean() const { return std::get_if<bool>(&value_); }
    const JsonNumber* number() const { return std::get_if<JsonNumber>(&value_); }
    const std::string* string() const { return std::get_if<std::string>(&value_); }
    const Array* array() const { return std::get_if<Array>(&value_); }
    Array* array() { return std::get_if<Array>(&value_); }
    const Object* object() const { return std::get_if<Object>(&value_); }
    Object* object() { return std::get_if<Object>(&value_); }

    // A member of an object; null when this is no object or has no such key.
    const Json* member(std::string_view key) const;
    // A member that is a string; null otherwise.
    const std::string* string(std::string_view key) const;

    // Without white space, slashes and non-ASCII text as they are.
    std::string compact() const;
    // Two blanks a level, sorted keys, " : " between key and value; no line feed at the end.
    std::string pretty() const;

    // The same; nothing when it is longer than that many bytes. Blanks make deep values long: the
    // pretty text of a hostile mebibyte would fill hundreds.
    std::optional<std::string> pretty(std::size_t maximumBytes) const;

    // The same in pieces, each given to `take` as soon as it is written, so that even that text
    // needs next to no memory.
    void pretty(const std::function<void(std::string_view)>& take) const;

    // By value: the order of keys and the writing of numbers and strings do not count.
    friend bool operator==(const Json&, const Json&) = default;

private:
    // An array or object with something in it.
    bool hasElements() const;
    // Drops elements of this container up to one that is such a container itself, which is handed
    // over; nothing when there is none, and then this container is empty.
    std::optional<Json> takeContainer();

    std::variant<std::monostate, bool, JsonNumber, std::string, Array, Object> value_;
};

} // namespace notch
