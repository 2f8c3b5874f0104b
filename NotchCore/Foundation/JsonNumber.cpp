// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"

#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>

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

// While it lives, this thread's numbers have a decimal point, whatever setlocale(3) says. (The
// from_chars and to_chars of doubles need no such thing, but they draw in libm, whose loading every
// hook process would pay for.)
class PlainLocale {
public:
    PlainLocale()
        : previous_(::uselocale(plain()))
    {
    }
    ~PlainLocale() { ::uselocale(previous_); }
    PlainLocale(const PlainLocale&) = delete;
    PlainLocale& operator=(const PlainLocale&) = delete;

private:
    static locale_t plain()
    {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t previous_;
};

std::string shortestText(double value)
{
    const PlainLocale plain;
    std::array<char, 32> text{};
    // 15 digits survive the way through a double, and 17 tell every double from its neighbours.
    for (int digits = 15; digits <= 17; ++digits) {
        ::snprintf(text.data(), text.size(), "%.*g", digits, value);
        if (::strtod(text.data(), nullptr) == value)
            break;
    }
    return text.data();
}

} // namespace

JsonNumber::JsonNumber(std::int64_t value)
    : text_(std::to_string(value))
{
}

JsonNumber::JsonNumber(double value)
    : text_(shortestText(value))
{
    assert(std::isfinite(value));
}

double JsonNumber::toDouble() const
{
    const PlainLocale plain;
    return ::strtod(text_.c_str(), nullptr);
}

bool operator==(const JsonNumber& a, const JsonNumber& b)
{
    return a.text_ == b.text_ || decimal(a.text_) == decimal(b.text_);
}

} // namespace notch
