// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <QApplication>

#include <optional>

namespace notch {
namespace {

// The application of every test of this program. It ends with the last test: left to the end of the
// process it would come after parts of Qt that it needs.
class Application final : public testing::Environment {
public:
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_.emplace(count_, arguments_);
    }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    std::optional<QApplication> application_;
};

const testing::Environment* const application = testing::AddGlobalTestEnvironment(new Application);

} // namespace
} // namespace notch
