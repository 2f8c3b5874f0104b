// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace notch {

// Writes anew, after the bar of each line, what `after` answers to the operations before it. So a
// whole trace is compared with itself.
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

// Carries out operations that are written as words, with commas between them. An operation that
// does not exist, a word that is missing and one that is left over each end the process: nothing
// that was written so can be trusted.
class TracePlayer {
public:
    virtual ~TracePlayer() = default;

    void play(const std::string& operations)
    {
        std::istringstream list(operations);
        for (std::string operation; std::getline(list, operation, ',');)
            perform(operation);
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
    // True when this is the next word, which then is taken.
    bool given(std::string_view word)
    {
        const auto before = words_.tellg();
        if (more() == word)
            return true;
        words_.clear();
        words_.seekg(before);
        return false;
    }
    // The next word, if there is one.
    std::optional<std::string> more()
    {
        std::string word;
        return words_ >> word ? std::optional(word) : std::nullopt;
    }
    // The next word, which must be there.
    template <class Value = std::string> Value next()
    {
        Value value{};
        if (!(words_ >> value))
            refuse("a word is missing");
        return value;
    }
    void answer(const std::string& given) { answers_ += given + "  "; }
    void answer(bool given) { answer(std::string(given ? "yes" : "no")); }
    virtual std::string stateText() = 0;
    [[noreturn]] void refuse(const std::string& reason) const
    {
        std::fprintf(stderr, "%s: %s\n", reason.c_str(), words_.str().c_str());
        std::abort();
    }

    std::map<std::string, std::function<void()>> operations_; // By name.

private:
    // One operation may follow the other without a comma, as after "at 0.45".
    void perform(const std::string& operations)
    {
        words_ = std::istringstream(operations);
        while (const auto name = more()) {
            const auto found = operations_.find(*name);
            if (found == operations_.end())
                refuse(*name + " is no operation");
            found->second();
        }
    }

    std::istringstream words_;
    std::string answers_;
};

} // namespace notch
