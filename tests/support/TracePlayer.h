// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace notch {

// Writes anew, after the bar of each line, what `after` answers to the operations before it. So a
// test compares a whole trace with itself.
inline std::string retold(
    std::string_view trace, const std::function<std::string(const std::string&)>& after)
{
    std::istringstream lines{std::string(trace)};
    std::string told;
    for (std::string line; std::getline(lines, line);) {
        const auto operations = line.substr(0, line.find('|'));
        told += operations + "| " + after(operations) + '\n';
    }
    return told;
}

// Carries out operations that are written as words, with or without commas between them.
class TracePlayer {
public:
    virtual ~TracePlayer() = default;

    void play(std::string operations)
    {
        std::ranges::replace(operations, ',', ' ');
        words_ = std::istringstream(operations);
        for (std::string name; words_ >> name;)
            operations_.at(name)();
    }
    // The answers of the operations, if they give any, and the state after them.
    std::string after(const std::string& operations)
    {
        play(operations);
        return std::exchange(answers_, {}) + stateText();
    }
    std::string played(std::string_view trace)
    {
        return retold(trace, [this](const auto& operations) { return after(operations); });
    }

protected:
    // The word after the operation's name, and so on.
    template <class Value = std::string> Value next()
    {
        Value value{};
        words_ >> value;
        return value;
    }
    void answer(const std::string& given) { answers_ += given + "  "; }
    void answer(bool given) { answer(std::string(given ? "yes" : "no")); }
    virtual std::string stateText() = 0;

    std::map<std::string, std::function<void()>> operations_; // By name.

private:
    std::istringstream words_;
    std::string answers_;
};

} // namespace notch
