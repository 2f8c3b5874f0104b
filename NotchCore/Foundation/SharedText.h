// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace notch {

// A text that never changes, so that its copies share one memory: for what is large and handed
// through many hands. Reads as the std::string that it holds.
class SharedText {
public:
    SharedText() = default;
    SharedText(std::string text)
        : text_(std::make_shared<const std::string>(std::move(text)))
    {
    }
    SharedText(const char* text)
        : SharedText(std::string(text))
    {
    }

    const std::string& string() const
    {
        static const std::string empty;
        return text_ ? *text_ : empty;
    }
    operator const std::string&() const { return string(); }
    operator std::string_view() const { return string(); }

    friend bool operator==(const SharedText& a, const SharedText& b)
    {
        return a.text_ == b.text_ || a.string() == b.string();
    }

private:
    std::shared_ptr<const std::string> text_;
};

} // namespace notch
