// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "SettingsView/SectionContent.h"

#include <QGroupBox>

#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

class QCheckBox;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace notch {

// A card with a title, switches and notes. The switches are the model's.
class SettingsSection : public QGroupBox {
public:
    // The model is borrowed. A section with more to show puts it after the content's rows and ends
    // with addLastRows().
    SettingsSection(AppModel& model, const SectionContent& content);

    // Shows the model's present state.
    virtual void refresh();

protected:
    void addLastRows() { addRows(content_.lastRows); }
    void add(QWidget* widget);
    QHBoxLayout* addRow();
    // Side by side, as many in a row as there is room for with their present texts.
    void addButtons(std::initializer_list<QPushButton*> buttons);
    AppModel& model() { return model_; }

    void paintEvent(QPaintEvent* event) override;

private:
    void addRows(std::span<const SectionRow> rows);
    QCheckBox* makeSwitch(Preference preference, std::string_view text);

    AppModel& model_;
    const SectionContent& content_;
    QVBoxLayout* column_;
    std::vector<std::pair<Preference, QCheckBox*>> switches_;
};

// A text that one reads once, in smaller letters.
QWidget* settingsNote(std::string_view text);
// `name` is for tests and tools; a person does not see it.
QPushButton* settingsButton(const char* name, std::string_view text);

} // namespace notch
