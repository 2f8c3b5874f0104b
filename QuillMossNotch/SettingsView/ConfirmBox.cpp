// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "SettingsView/ConfirmBox.h"

#include "SettingsView/SettingsSection.h"
#include "SettingsView/SettingsStyle.h"
#include "SettingsView/SymbolLabel.h"
#include "Style/NotchStyle.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace notch {
namespace {

constexpr QSize previewSize{490, 250};
constexpr int leastWidth = 420;
constexpr QLatin1String cancelName("settings-confirm-no");

} // namespace

ConfirmBox::ConfirmBox(const ConfirmQuestion& question, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("settings-confirm"));
    setWindowTitle(QStringLiteral("QuillMoss Notch"));
    setAccessibleName(toQString(question.title));
    setAccessibleDescription(toQString(question.text));
    setWindowModality(Qt::WindowModal);
    setPalette(settings::windowPalette());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(20, 18, 20, 16);
    column->setSpacing(12);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* const title = plainLabel(question.title, settings::font(14, QFont::DemiBold));
    auto* const text = plainLabel(question.text, settings::font(12));
    title->setMinimumWidth(question.preview ? previewSize.width() : leastWidth);
    for (auto* const label : {title, text}) {
        label->setMaximumWidth(previewSize.width());
        column->addWidget(label);
    }
    if (question.preview)
        column->addWidget(preview(*question.preview));
    column->addWidget(buttons(question));
    findChild<QPushButton*>(cancelName)->setFocus(); // Only now is it in this window.
}

QWidget* ConfirmBox::preview(const std::string& text)
{
    auto* const view = new QPlainTextEdit(toQString(text));
    view->setObjectName(QStringLiteral("settings-preview"));
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setFont(settings::monospaced(11));
    view->setFixedSize(previewSize);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return view;
}

QWidget* ConfirmBox::buttons(const ConfirmQuestion& question)
{
    auto* const confirm = settingsButton("settings-confirm-yes", question.confirm);
    auto* const cancel = settingsButton(cancelName.latin1(), question.cancel);
    auto* const row = new QDialogButtonBox;
    row->addButton(confirm, QDialogButtonBox::AcceptRole);
    row->addButton(cancel, QDialogButtonBox::RejectRole);
    cancel->setDefault(true);
    connect(row, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(row, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return row;
}

} // namespace notch
