// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/JsonReader.h"

#include "Foundation/LargeStack.h"

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <limits>
#include <utility>
#include <vector>

namespace notch {
namespace {

namespace json = boost::json;

// A stack that copies nothing when it grows and gives memory back as it shrinks. (The blocks of a
// std::deque are so small that malloc keeps freed ones for itself.)
template <class T> class BlockStack {
public:
    void push(T value)
    {
        if (blocks_.empty() || blocks_.back().size() == blocks_.back().capacity())
            blocks_.emplace_back().reserve(nextLength());
        blocks_.back().push_back(std::move(value));
    }
    T& top() { return blocks_.back().back(); }
    void pop()
    {
        blocks_.back().pop_back();
        if (blocks_.back().empty())
            blocks_.pop_back();
    }

private:
    // The first block is small: most texts are, and a hook process would pay for the rest.
    std::size_t nextLength() const { return blocks_.empty() ? 32 : 1024; }

    std::vector<std::vector<T>> blocks_; // No block is empty.
};

// Builds values from the parser's events, children before their container.
class Builder {
public:
    // Values further in than this are left out of their container.
    explicit Builder(std::size_t levels)
        : levels_(levels)
    {
    }

    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_object_size = unlimited;
    static constexpr std::size_t max_array_size = unlimited;
    static constexpr std::size_t max_key_size = unlimited;
    static constexpr std::size_t max_string_size = unlimited;

    bool on_document_begin(json::error_code&) { return true; }
    bool on_document_end(json::error_code&) { return true; }
    bool on_array_begin(json::error_code&) { return enter(); }
    bool on_array_end(std::size_t size, json::error_code&)
    {
        const auto count = leave(size);
        Json::Array array;
        array.reserve(count);
        for (std::size_t i = 0; i < count; ++i, values_.pop())
            array.push_back(std::move(values_.top()));
        std::ranges::reverse(array);
        return push(std::move(array));
    }
    bool on_object_begin(json::error_code&) { return enter(); }
    bool on_object_end(std::size_t size, json::error_code&)
    {
        const auto count = leave(size);
        Json::Object object;
        // The last of equal keys comes first, and stays.
        for (std::size_t i = 0; i < count; ++i, keys_.pop(), values_.pop())
            object.try_emplace(std::move(keys_.top()), std::move(values_.top()));
        return push(std::move(object));
    }
    bool on_key_part(json::string_view part, std::size_t, json::error_code&)
    {
        return append(part);
    }
    bool on_key(json::string_view part, std::size_t, json::error_code&)
    {
        append(part);
        if (isBuilt())
            keys_.push(std::exchange(text_, {}));
        return true;
    }
    bool on_string_part(json::string_view part, std::size_t, json::error_code&)
    {
        return append(part);
    }
    bool on_string(json::string_view part, std::size_t, json::error_code&)
    {
        append(part);
        return push(std::exchange(text_, {}));
    }
    bool on_number_part(json::string_view part, json::error_code&) { return append(part); }
    bool on_int64(std::int64_t, json::string_view part, json::error_code&) { return number(part); }
    bool on_uint64(std::uint64_t, json::string_view part, json::error_code&)
    {
        return number(part);
    }
    bool on_double(double, json::string_view part, json::error_code&) { return number(part); }
    bool on_bool(bool value, json::error_code&) { return push(value); }
    bool on_null(json::error_code&) { return push({}); }
    bool on_comment_part(json::string_view, json::error_code&) { return true; }
    bool on_comment(json::string_view, json::error_code&) { return true; }

    Json takeRoot() { return std::move(values_.top()); }

private:
    bool isBuilt() const { return level_ <= levels_; }
    bool enter()
    {
        ++level_;
        return true;
    }
    // How many of the container's children were built: all or none.
    std::size_t leave(std::size_t size)
    {
        const auto count = isBuilt() ? size : 0;
        --level_;
        return count;
    }
    bool push(Json value)
    {
        if (isBuilt())
            values_.push(std::move(value));
        return true;
    }
    bool append(json::string_view part)
    {
        if (isBuilt())
            text_.append(part.data(), part.size());
        return true;
    }
    bool number(json::string_view part)
    {
        append(part);
        return push(JsonNumber(std::exchange(text_, {})));
    }

    std::size_t levels_;
    std::size_t level_ = 0; // Of the value being read.
    BlockStack<Json> values_; // Read, and not yet in their container.
    BlockStack<std::string> keys_;
    std::string text_; // Of the string, key or number being read.
};

// The parser library recurses. A text nested deeper than this is read on a stack of its own, since
// that of the calling thread may be small.
constexpr int ordinaryDepth = 32;

bool isDeep(std::string_view text)
{
    int depth = 0;
    bool inString = false;
    for (std::size_t at = 0; at < text.size() && depth <= ordinaryDepth; ++at) {
        const char character = text[at];
        if (inString && character == '\\')
            ++at;
        else if (character == '"')
            inString = !inString;
        else if (!inString && (character == '[' || character == '{'))
            ++depth;
        else if (!inString && (character == ']' || character == '}'))
            --depth;
    }
    return depth > ordinaryDepth;
}

std::optional<Json> parsed(std::string_view text, std::size_t levels)
{
    json::parse_options options;
    options.max_depth = Json::maximumDepth;
    json::basic_parser<Builder> parser(options, levels);
    json::error_code error;
    const auto consumed = parser.write_some(false, text.data(), text.size(), error);
    if (error || consumed != text.size())
        return std::nullopt;
    return parser.handler().takeRoot();
}

} // namespace

std::optional<Json> readJson(std::string_view text, std::size_t levels)
{
    if (!isDeep(text))
        return parsed(text, levels);
    std::optional<Json> value;
    runOnLargeStack([&] { value = parsed(text, levels); });
    return value;
}

} // namespace notch
