// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

namespace notch {

class IconButton;
class TextLine;
struct HeaderContent;

// The avatar, what the notch is about, and the two buttons beside it.
class HeaderSection final : public QWidget {
public:
    HeaderSection(AppModel& model, QWidget* parent);

    void present(const HeaderContent& content);

private:
    void settingsClicked();

    class Avatar;

    AppModel& model_;
    Avatar* avatar_;
    TextLine* text_;
    IconButton* settings_;
    IconButton* close_;
};

} // namespace notch
