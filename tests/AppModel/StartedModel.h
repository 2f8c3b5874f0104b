// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/FakeOutside.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace notch {

using Calls = std::vector<std::string>;

// A model after a quiet launch, on virtual time.
struct StartedModel {
    StartedModel()
    {
        model.start();
        outside.calls.clear();
    }

    const AppModelState& state() const { return model.state(); }
    const NotchInteraction& interaction() const { return model.state().interaction; }
    void pass(double seconds) { outside.time.advance(Seconds{seconds}); }
    void decide(Decision decision) { model.decide(*interaction().current(), decision); }
    // A request on screen, its buttons armed.
    void armedRequest(const std::string& id)
    {
        outside.request(id);
        pass(1);
        outside.calls.clear();
    }

    FakeOutside outside;
    AppModel model{outside.seams()};
};

class AppModelTest : public testing::Test, protected StartedModel { };

} // namespace notch
