// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/SettingsSection.h"

#include "SettingsView/SettingsStyle.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/NotchStyle.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace notch {
namespace {

constexpr double cornerRadius = 9;
constexpr int padding = 14;
constexpr int scrollBar = 20; // The widest; its room is kept free at all times.

// A button with more room round its words than styles give.
class RoomyButton final : public QPushButton {
public:
    using QPushButton::QPushButton;
    QSize sizeHint() const override { return QPushButton::sizeHint() + QSize(14, 2); }
};

} // namespace

SettingsSection::SettingsSection(AppModel& model, const SectionContent& content)
    : model_(model)
    , content_(content)
    , column_(new QVBoxLayout(this))
{
    setAccessibleName(toQString(content.title));
    column_->setContentsMargins(padding, padding, padding, padding);
    column_->setSpacing(8);
    auto* const title =
        new SymbolLabel(settings::font(13, QFont::DemiBold), Tone::plain, settings::scaled(16));
    title->setContent({content.symbol, Tone::secondary, content.title});
    add(title);
    addRows(content.rows);
}

void SettingsSection::add(QWidget* widget)
{
    column_->addWidget(widget);
}

QHBoxLayout* SettingsSection::addRow()
{
    auto* const row = new QHBoxLayout;
    row->setSpacing(8);
    column_->addLayout(row);
    return row;
}

void SettingsSection::addButtons(std::initializer_list<QPushButton*> buttons)
{
    constexpr int room =
        settings::contentWidth - 2 * settings::sideMargin - 2 * padding - scrollBar;
    QHBoxLayout* row = nullptr;
    int used = room;
    for (auto* const button : buttons) {
        const int width = button->sizeHint().width();
        if (used + width > room) {
            row = addRow();
            row->addStretch(1);
            used = 0;
        }
        row->insertWidget(row->count() - 1, button);
        used += width + row->spacing();
    }
}

void SettingsSection::addRows(std::span<const SectionRow> rows)
{
    for (const auto& row : rows)
        add(row.preference ? makeSwitch(*row.preference, row.text) : settingsNote(row.text));
}

QCheckBox* SettingsSection::makeSwitch(Preference preference, std::string_view text)
{
    auto* const box = new QCheckBox(toQString(text));
    box->setObjectName(toQString(name(preference)));
    box->setFont(settings::font(13));
    // Only what a person switches reaches the model: refresh() must not turn defaults into choices.
    connect(box, &QCheckBox::clicked, this,
        [this, preference](bool on) { model_.setPreference(preference, on); });
    switches_.emplace_back(preference, box);
    return box;
}

void SettingsSection::refresh()
{
    for (const auto& [preference, box] : switches_)
        box->setChecked(model_.state().switches.isOn(preference));
}

void SettingsSection::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid), 0.5));
    painter.setBrush(settings::ground(palette()));
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

QWidget* settingsNote(std::string_view text)
{
    return plainLabel(text, settings::font(11), Tone::secondary);
}

QPushButton* settingsButton(const char* name, std::string_view text)
{
    auto* const button = new RoomyButton(toQString(text));
    button->setObjectName(QLatin1String(name));
    button->setFont(settings::font(13));
    return button;
}

} // namespace notch
