// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace notch {

// A private directory (mode 0700) that is gone with everything in it when the test ends.
class TemporaryDirectory {
public:
    explicit TemporaryDirectory(const std::string& parent = "/tmp")
        : path_(parent + "/notch-test-XXXXXX")
    {
        if (!::mkdtemp(path_.data()))
            throw std::runtime_error("mkdtemp failed");
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& path() const { return path_; }
    // The path of `name` in it.
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

} // namespace notch
