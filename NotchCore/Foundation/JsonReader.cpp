// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/JsonReader.h"

#include <boost/json/basic_parser_impl.hpp>
#include <deque>
#include <limits>
#include <utility>

namespace notch {
namespace {

namespace json = boost::json;

// Builds values from the parser's events, children before their container. A deque holds the open
// values: it grows without copying, so that a hostile array costs no more than its own elements.
class Builder {
public:
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_object_size = unlimited;
    static constexpr std::size_t max_array_size = unlimited;
    static constexpr std::size_t max_key_size = unlimited;
    static constexpr std::size_t max_string_size = unlimited;

    bool on_document_begin(json::error_code&) { return true; }
    bool on_document_end(json::error_code&) { return true; }
    bool on_array_begin(json::error_code&) { return true; }
    bool on_array_end(std::size_t count, json::error_code&)
    {
        Json::Array array;
        array.reserve(count);
        const auto first = values_.end() - static_cast<std::ptrdiff_t>(count);
        for (auto value = first; value != values_.end(); ++value)
            array.push_back(std::move(*value));
        values_.erase(first, values_.end());
        return push(std::move(array));
    }
    bool on_object_begin(json::error_code&) { return true; }
    bool on_object_end(std::size_t count, json::error_code&)
    {
        Json::Object object;
        const auto members = static_cast<std::ptrdiff_t>(count);
        auto value = values_.end() - members;
        const auto firstKey = keys_.end() - members;
        for (auto key = firstKey; key != keys_.end(); ++key, ++value)
            object.insert_or_assign(std::move(*key), std::move(*value));
        keys_.erase(firstKey, keys_.end());
        values_.erase(values_.end() - members, values_.end());
        return push(std::move(object));
    }
    bool on_key_part(json::string_view part, std::size_t, json::error_code&)
    {
        return append(part);
    }
    bool on_key(json::string_view part, std::size_t, json::error_code&)
    {
        append(part);
        keys_.push_back(std::exchange(text_, {}));
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

    Json takeRoot() { return std::move(values_.front()); }

private:
    bool push(Json value)
    {
        values_.push_back(std::move(value));
        return true;
    }
    bool append(json::string_view part)
    {
        text_.append(part.data(), part.size());
        return true;
    }
    bool number(json::string_view part)
    {
        append(part);
        return push(JsonNumber(std::exchange(text_, {})));
    }

    std::deque<Json> values_;
    std::deque<std::string> keys_;
    std::string text_; // Of the string, key or number being read.
};

} // namespace

std::optional<Json> readJson(std::string_view text)
{
    json::parse_options options;
    options.max_depth = Json::maximumDepth;
    json::basic_parser<Builder> parser(options);
    json::error_code error;
    const auto consumed = parser.write_some(false, text.data(), text.size(), error);
    if (error || consumed != text.size())
        return std::nullopt;
    return parser.handler().takeRoot();
}

} // namespace notch
