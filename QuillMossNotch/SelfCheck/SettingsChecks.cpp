// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/EmptyHome.h"
#include "Rehearsal/FakeDependencies.h"
#include "SelfCheck/MotionChecks.h"
#include "SelfCheck/Suite.h"
#include "SettingsView/SectionContent.h"
#include "SettingsView/SettingsPage.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <vector>

namespace notch {
namespace {

// The settings' page as its window has it, of a model that has started.
struct ShownSettings {
    ShownSettings()
    {
        model.start();
        fakes.takeCalls();
        model.onQuitRequested = [this] { ++quits; };
        page.resize(600, 680);
        page.show();
        page.lookAgain();
    }

    QScrollArea& area() { return *page.findChild<QScrollArea*>(); }
    QAbstractButton* quit()
    {
        return page.findChild<QAbstractButton*>(QStringLiteral("settings-quit"));
    }
    // Of a widget in the page's own coordinates.
    QRect place(const QWidget& widget)
    {
        return {widget.mapTo(&page, QPoint(0, 0)), widget.size()};
    }

    FakeDependencies fakes;
    AppModel model{fakes.seams()};
    EmptyHome home;
    SettingsPage page{model, home.surroundings(fakes.time)};
    int quits = 0;
};

bool isBelowTheOneBefore(ShownSettings& shown)
{
    const auto sections = shown.page.findChildren<QGroupBox*>();
    int end = 0;
    for (const auto* section : sections) {
        const auto place =
            shown.place(*section).translated(0, shown.area().verticalScrollBar()->value());
        if (place.top() < end || place.height() < 40)
            return false;
        end = place.bottom();
    }
    return sections.size() == 4;
}

bool quitStaysInSight(ShownSettings& shown)
{
    auto& bar = *shown.area().verticalScrollBar();
    for (const int value : {bar.minimum(), bar.maximum() / 2, bar.maximum()}) {
        bar.setValue(value);
        const auto place = shown.place(*shown.quit());
        if (!shown.page.rect().contains(place)
            || place.intersects(shown.place(*shown.area().viewport())))
            return false;
    }
    return bar.maximum() > 0;
}

} // namespace

void checkSettings(Suite& suite)
{
    ShownSettings shown;
    suite.check("the settings are 600 points wide, and nothing is cut off at their sides",
        shown.area().widget()->width() <= 600
            && shown.area().horizontalScrollBar()->maximum() == 0);
    suite.check("the settings' four sections stand below each other", isBelowTheOneBefore(shown));
    if (!shown.quit()) {
        suite.check("the settings have their button that quits", false);
        return;
    }
    suite.check("the button that quits is in sight wherever the settings are scrolled to",
        quitStaysInSight(shown));
    shown.quit()->click();
    suite.check(
        "the button that quits asks for it once, and ends, decides and calls nothing itself",
        shown.quits == 1 && shown.fakes.takeCalls().empty());
    shown.model.onQuitRequested = {};
    shown.quit()->click();
    suite.check("with nobody to ask the button that quits does nothing",
        shown.quits == 1 && shown.fakes.takeCalls().empty());
}

} // namespace notch
