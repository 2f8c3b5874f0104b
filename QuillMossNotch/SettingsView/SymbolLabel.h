// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "SettingsView/SectionContent.h"

#include <QLabel>

namespace notch {

// Plain text that wraps, with a symbol before its first line or none. Follows the desktop's theme.
class SymbolLabel final : public QLabel {
public:
    // The text is plain or secondary. The symbol is `side` wide.
    explicit SymbolLabel(const QFont& font, Tone textTone = Tone::plain, int side = 0);

    void setContent(const StatusLine& line);
    // For what a person may want to take elsewhere.
    void makeSelectable();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int side_;
    Symbol symbol_ = Symbol::none;
    Tone symbolTone_ = Tone::plain;
};

// Without a symbol.
SymbolLabel* plainLabel(std::string_view text, const QFont& font, Tone tone = Tone::plain);

} // namespace notch
