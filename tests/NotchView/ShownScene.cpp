// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "ShownScene.h"

namespace notch {

ShownScene::ShownScene()
{
    model.subscribe([this] { layOut(); });
    layOut();
    view.show();
    fakes.takeCalls();
}

void ShownScene::layOut()
{
    view.refresh();
    view.resize(480, view.fit(480, screenHeight));
}

std::string ShownScene::text(const char* name) const
{
    return find(name).property("text").toString().toStdString();
}

} // namespace notch
