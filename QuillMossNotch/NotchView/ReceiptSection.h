// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"

#include <QWidget>

namespace notch {

class ActionButton;
class SymbolPicture;
class TextLine;

// What became of the last request.
class ReceiptSection final : public QWidget {
public:
    ReceiptSection(AppModel& model, QWidget* parent);

    // Only while there is a receipt.
    void present(const NotchInteraction& interaction);

private:
    SymbolPicture* picture_;
    TextLine* title_;
    TextLine* note_;
    ActionButton* next_;
};

} // namespace notch
