// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "AppModel/AppModel.h"
#include "AppModel/Preferences.h"
#include "Foundation/Time.h"

#include <QWidget>

namespace notch {

// Everything that the notch shows, closed and open. Reads the model's state, calls its operations
// and decides nothing.
//
// Its widgets are built once; refresh() only changes their texts and which of them are visible, so
// that no redraw moves the focus, loses a scroll position or swallows a press.
//
//     NotchView view(model, preferences, clock, NotchView::Surface::absent);
//     model.subscribe(…);                       // schedules a layout pass, which does:
//     view.refresh();
//     view.resize(panelWidth, view.fittingHeight(panelWidth));
class NotchView final : public QWidget {
public:
    // Whether the view paints the black silhouette itself or its host does.
    enum class Surface { drawn, absent };

    // All three are borrowed and must outlive the view.
    NotchView(AppModel& model, const Preferences& preferences, const Clock& clock, Surface surface,
        QWidget* parent = nullptr);
    ~NotchView() override;

    // Shows the model's present state: the compact strip, and below it the open content when
    // state().isExpanded(). Cheap when nothing has changed.
    void refresh();
    // The height that the present content needs at this width, in points; call refresh() first.
    int fittingHeight(int width) const;
    // The desktop asks for less motion; false until told.
    void setReducesMotion(bool reduces);
};

} // namespace notch
