// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace notch {
namespace {

// A decimal number in one form only: value = ±0.digits × 10^exponent, without zeros at either end
// of digits. Zero has no digits.
struct Decimal {
    bool negative = false;
    std::string digits;
    std::int64_t exponent = 0;
    bool operator==(const Decimal&) const = default;
};

// The reader lets no exponent beyond 32 bits through, so that this sum cannot overflow.
std::int64_t exponentValue(std::string_view text)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

Decimal decimal(std::string_view text)
{
    Decimal result;
    result.negative = text.front() == '-';
    if (result.negative)
        text.remove_prefix(1);
    const auto exponentAt = text.find_first_of("eE");
    const auto mantissa = text.substr(0, exponentAt);
    const auto point = mantissa.find('.');
    result.digits = mantissa.substr(0, point);
    result.exponent = static_cast<std::int64_t>(result.digits.size());
    if (point != std::string_view::npos)
        result.digits += mantissa.substr(point + 1);
    if (exponentAt != std::string_view::npos)
        result.exponent += exponentValue(text.substr(exponentAt + 1));

    const auto first = result.digits.find_first_not_of('0');
    if (first == std::string::npos)
        return {};
    result.exponent -= static_cast<std::int64_t>(first);
    const auto last = result.digits.find_last_not_of('0');
    result.digits = result.digits.substr(first, last - first + 1);
    return result;
}

template <class Value> std::string shortestText(Value value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

} // namespace

JsonNumber::JsonNumber(std::int64_t value)
    : text_(shortestText(value))
{
}

JsonNumber::JsonNumber(double value)
    : text_(shortestText(value))
{
    assert(std::isfinite(value));
}

double JsonNumber::toDouble() const
{
    double value = 0;
    const auto [end, error] = std::from_chars(text_.data(), text_.data() + text_.size(), value);
    // from_chars leaves the value alone beyond the range; strtod answers infinity or zero there.
    return error == std::errc::result_out_of_range ? std::strtod(text_.c_str(), nullptr) : value;
}

bool operator==(const JsonNumber& a, const JsonNumber& b)
{
    return a.text_ == b.text_ || decimal(a.text_) == decimal(b.text_);
}

} // namespace notch
