// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/SettingsDocument.h"

#include "HookConfiguration/HookInstaller.h"

#include <algorithm>

namespace notch {
namespace {

void require(bool holds, const char* otherwise)
{
    if (!holds)
        throw HookInstaller::Failure(otherwise);
}

bool isArrayOfObjects(const Json* value)
{
    const auto isObject = [](const Json& element) { return element.object() != nullptr; };
    return value && value->array() && std::ranges::all_of(*value->array(), isObject);
}

// The platform whose format this is has one type for numbers and booleans.
bool isNumber(const Json& value)
{
    return value.number() || value.boolean();
}

void validateHook(const Json& hook)
{
    const auto* type = hook.string("type");
    require(type && !type->empty(), "Hook type 必须是字符串。");
    require(*type != "command" || hook.string("command"), "Command hook 缺少字符串 command。");
    require(*type != "http" || hook.string("url"), "HTTP hook 缺少字符串 url。");
    const auto* timeout = hook.member("timeout");
    require(!timeout || isNumber(*timeout), "Hook timeout 必须是数字。");
}

void validateGroup(const Json& group)
{
    require(!group.member("matcher") || group.string("matcher"), "Hook matcher 必须是字符串。");
    require(isArrayOfObjects(group.member("hooks")), "Hook 分组必须包含 hooks 数组。");
    for (const auto& hook : hooksOf(group))
        validateHook(hook);
}

} // namespace

Json::Object validateSettings(const std::optional<std::string>& bytes)
{
    if (!bytes)
        return {};
    auto document = Json::parse(*bytes);
    require(document && document->object(), "配置必须是合法 JSON 对象；未修改文件。");
    validateHooks(*document->object());
    return std::move(*document->object());
}

void validateHooks(const Json::Object& root)
{
    const auto found = root.find("hooks");
    if (found == root.end())
        return;
    const auto* events = found->second.object();
    require(events, "hooks 必须是 JSON 对象。");
    for (const auto& [event, groups] : *events) {
        require(isArrayOfObjects(&groups), "Hook 事件必须包含分组数组。");
        for (const auto& group : *groups.array())
            validateGroup(group);
    }
}

std::string settingsText(const Json& document)
{
    return document.pretty() + '\n';
}

void writeSettings(const Json& document, const std::function<void(std::string_view)>& write)
{
    document.pretty(write);
    write("\n");
}

const Json::Array& hooksOf(const Json& group)
{
    return *group.member("hooks")->array();
}

} // namespace notch
