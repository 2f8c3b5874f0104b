// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "AppDelegate/QuitAlert.h"

#include <QPushButton>

#include <utility>

namespace notch {

void QuitAlert::ask(const QuitQuestion& question, std::function<void(QuitEffects::Answer)> answered)
{
    auto* const box = new QMessageBox;
    box_ = box;
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QStringLiteral("QuillMoss Notch"));
    box->setIcon(QMessageBox::Question);
    box->setText(QString::fromStdString(question.message));
    box->setInformativeText(QString::fromStdString(question.informativeText));
    auto* const stay =
        box->addButton(QString::fromStdString(question.stay), QMessageBox::RejectRole);
    const auto* const leave =
        box->addButton(QString::fromStdString(question.leave), QMessageBox::AcceptRole);
    box->setDefaultButton(stay);
    box->setEscapeButton(stay);
    QObject::connect(box, &QMessageBox::finished, box, [=, answered = std::move(answered)] {
        answered(
            box->clickedButton() == leave ? QuitEffects::Answer::leave : QuitEffects::Answer::stay);
    });
    box->setWindowModality(Qt::ApplicationModal);
    bringForward();
}

void QuitAlert::bringForward()
{
    if (!box_)
        return;
    box_->setWindowState(box_->windowState() & ~Qt::WindowMinimized);
    box_->show();
    box_->raise();
    box_->activateWindow();
}

} // namespace notch
