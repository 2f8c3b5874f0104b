// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/HookFlow.h"

#include <QWidget>

class QPushButton;

namespace notch {

class SymbolLabel;

// What the last change of the host's file came to; hidden while there was none. A screen reader
// hears of a new one without being there.
class ResultRow final : public QWidget {
public:
    // Borrowed.
    explicit ResultRow(HookFlow& flow);

    // True when a change has ended since the last time.
    bool refresh();

private:
    HookFlow& flow_;
    SymbolLabel* text_;
    QPushButton* backup_;
    int shown_ = 0; // How many changes had ended by then.
};

} // namespace notch
