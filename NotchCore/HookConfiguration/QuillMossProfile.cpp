// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/QuillMossProfile.h"

#include "Foundation/Account.h"

namespace notch {
namespace {

struct Edition {
    std::string_view rawValue;
    std::string_view displayName;
    std::string_view settingsDirectory; // Under the home directory.
};

// By enumerator.
constexpr std::array<Edition, allQuillMossProfiles.size()> editions{{
    {"quillmoss", "QuillMoss", ".quillmoss"},
    {"quillmossAI", "QuillMoss AI", ".quillmoss-ai"},
}};

constexpr const Edition& edition(QuillMossProfile profile)
{
    return editions[static_cast<std::size_t>(profile)];
}

} // namespace

std::string_view rawValue(QuillMossProfile profile)
{
    return edition(profile).rawValue;
}

std::optional<QuillMossProfile> parseQuillMossProfile(std::string_view rawValue)
{
    for (const auto profile : allQuillMossProfiles)
        if (edition(profile).rawValue == rawValue)
            return profile;
    return std::nullopt;
}

std::string_view displayName(QuillMossProfile profile)
{
    return edition(profile).displayName;
}

std::string settingsURL(QuillMossProfile profile)
{
    auto path = homeDirectory();
    if (!path)
        return {};
    path->append("/").append(edition(profile).settingsDirectory).append("/settings.json");
    return *path;
}

} // namespace notch
