// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/NotchView.h"
#include "support/FakeOutside.h"

#include <QAbstractButton>

#include <string>
#include <string_view>

namespace notch {

// A started model with everything outside made up, brought into a state by words:
//
//   scene.play("hook 0.5 allow"); // A hook asks, half a second passes, the person allows.
//
// Scene.cpp has the words.
struct Scene {
    Scene();

    void play(std::string_view words);
    // What the hook of most scenes asks, with an identifier that is new: A, B and so on.
    ApprovalRequest command();
    // A hook asks this.
    void arrive(const ApprovalRequest& request);

    FakeOutside outside;
    AppModel model{outside.seams()};
    char lastID = '@';
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

    NotchView view{model, outside.preferences, outside.time};
};

} // namespace notch
