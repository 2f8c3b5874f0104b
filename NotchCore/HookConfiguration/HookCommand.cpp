// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Utf8.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/QuillMossProfile.h"

#include <algorithm>

namespace notch {
namespace {

constexpr std::string_view quotedQuote = "'\\''";

// A line feed would end the command in the middle, a NUL would cut it.
bool isExecutablePath(std::string_view path)
{
    return path.starts_with('/') && path.find('\0') == path.npos && path.find('\n') == path.npos;
}

std::string commandLine(const HookInstaller::CommandArguments& arguments)
{
    std::string command;
    for (const auto& argument : arguments) {
        if (!command.empty())
            command += ' ';
        command += HookInstaller::shellQuote(argument);
    }
    return command;
}

std::string checkedCommand(std::string_view executableURL, std::string_view flag,
    std::string_view source, std::string_view marker)
{
    // A settings file with other bytes than UTF-8 could never be read again.
    if (!isExecutablePath(executableURL) || !isUtf8(executableURL)
        || !parseQuillMossProfile(source))
        throw HookInstaller::Failure("需要绝对可执行文件路径和有效的 QuillMoss 来源。");
    return commandLine(
        {std::string(executableURL), std::string(flag), std::string(HookInstaller::sourceFlag),
            std::string(source), std::string(HookInstaller::ownerFlag), std::string(marker)});
}

// Takes one quoted word off the front of `text`; nothing when it starts otherwise.
std::optional<std::string> takeQuotedWord(std::string_view& text)
{
    if (!text.starts_with('\''))
        return std::nullopt;
    text.remove_prefix(1);
    std::string word;
    while (!text.empty()) {
        if (text.starts_with(quotedQuote)) {
            word += '\'';
            text.remove_prefix(quotedQuote.size());
        } else if (text.front() == '\'') {
            text.remove_prefix(1);
            return word;
        } else {
            word += text.front();
            text.remove_prefix(1);
        }
    }
    return std::nullopt;
}

std::optional<HookInstaller::CommandArguments> quotedWords(std::string_view command)
{
    HookInstaller::CommandArguments words;
    for (auto& word : words) {
        const bool first = &word == &words.front();
        if (!first && !command.starts_with(' '))
            return std::nullopt;
        command.remove_prefix(first ? 0 : 1);
        auto taken = takeQuotedWord(command);
        if (!taken)
            return std::nullopt;
        word = std::move(*taken);
    }
    return command.empty() ? std::optional(std::move(words)) : std::nullopt;
}

} // namespace

std::string HookInstaller::shellQuote(std::string_view argument)
{
    std::string quoted = "'";
    for (const char character : argument)
        if (character == '\'')
            quoted += quotedQuote;
        else
            quoted += character;
    return quoted + '\'';
}

std::string HookInstaller::approvalCommand(std::string_view executableURL, std::string_view source)
{
    return checkedCommand(executableURL, hookFlag, source, ownerMarker);
}

std::string HookInstaller::completionCommand(
    std::string_view executableURL, CompletionVariant variant)
{
    const bool probe = variant == CompletionVariant::probe;
    return checkedCommand(executableURL, probe ? probeFlag : completionHookFlag,
        rawValue(QuillMossProfile::quillmoss), probe ? probeOwnerMarker : completionOwnerMarker);
}

std::optional<HookInstaller::CommandArguments> HookInstaller::ownedArguments(
    std::string_view command, std::string_view flag, std::string_view marker,
    std::optional<std::string_view> expectedSource)
{
    auto words = quotedWords(command);
    if (!words)
        return std::nullopt;
    const auto& [executable, itsFlag, sourceWord, source, ownerWord, itsMarker] = *words;
    const bool owned = isExecutablePath(executable) && itsFlag == flag && sourceWord == sourceFlag
                    && parseQuillMossProfile(source)
                    && (!expectedSource || source == *expectedSource) && ownerWord == ownerFlag
                    && itsMarker == marker && commandLine(*words) == command;
    return owned ? std::move(words) : std::nullopt;
}

} // namespace notch
