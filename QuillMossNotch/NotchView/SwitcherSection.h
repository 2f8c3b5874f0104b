// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "NotchView/SwitcherContent.h"

#include <QWidget>

class QListWidget;

namespace notch {

class IconButton;
class TextLine;

// Moves between the requests that wait; hidden while fewer than two do.
class SwitcherSection final : public QWidget {
public:
    SwitcherSection(AppModel& model, QWidget* parent);

    void present(const NotchInteraction& interaction);

private:
    void buildList();
    void showEntries(const SwitcherContent& content);
    void rowChosen(int row);

    AppModel& model_;
    std::vector<SwitcherContent::Entry> entries_;
    TextLine* text_;
    QListWidget* list_;
    IconButton* previous_;
    IconButton* next_;
};

} // namespace notch
