// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/StartedModel.h"
#include "NotchView/NotchView.h"

#include <QAbstractButton>

namespace notch {

// A model that is brought into a state by the words of its traces, with requests as people see
// them and these words more: a hook that asks with "edit", "empty" or "long" texts, the number of
// "editions", "trusted" and "unreachable".
struct Scene : StartedModel {
    Scene();

    // What the hook of most scenes asks.
    ApprovalRequest command(const std::string& id) const;
    void arrive(const ApprovalRequest& request);
    // The host waits on a question.
    void wait(const std::string& title);
};

// With the view of its model on show, laid out as the host would.
struct ShownScene : Scene {
    ShownScene();

    void layOut();
    template <class Widget = QWidget> Widget& find(const char* name) const
    {
        return *view.findChild<Widget*>(QLatin1String(name));
    }
    QAbstractButton& button(const char* name) const { return find<QAbstractButton>(name); }
    std::string text(const char* name) const;

    int screenHeight = 1'000;
    NotchView view{model, fakes.time};
};

} // namespace notch
