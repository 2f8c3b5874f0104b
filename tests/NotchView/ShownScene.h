// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotchView/NotchView.h"
#include "Rehearsal/Scene.h"

#include <QAbstractButton>

#include <string>

namespace notch {

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
