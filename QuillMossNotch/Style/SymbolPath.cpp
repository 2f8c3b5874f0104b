// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Style/SymbolPath.h"

#include <QColor>
#include <QPainter>
#include <QPainterPathStroker>

#include <algorithm>
#include <array>
#include <map>
#include <sstream>
#include <string>

namespace notch {
namespace {

constexpr double lineWidth = 1.9;

// How a symbol is drawn on the grid. Each text is a row of commands with their numbers:
// M x y, L x y, C (three points), Z as in SVG; O x y r: a circle; R x y w h r: a rounded
// rectangle; A x y r a s: an arc from angle a, counter-clockwise by s degrees.
struct Drawing {
    Symbol symbol = Symbol::none;
    const char* lines = "";
    const char* areas = "";
    const char* gaps = ""; // Lines cut out of the areas.
};

#define SHIELD                                                                                     \
    "M12 2.3 L19.6 5.2 L19.6 11 C19.6 16 16.6 19.9 12 21.7 C7.4 19.9 4.4 16 4.4 11 L4.4 5.2 Z "
#define BUBBLE                                                                                     \
    "M7 3.5 L17 3.5 C19.4 3.5 21 5.2 21 7.5 L21 13.5 C21 15.9 19.4 17.5 17 17.5 L11.5 17.5 "       \
    "L7.5 21.2 L7.5 17.5 L7 17.5 C4.6 17.5 3 15.9 3 13.5 L3 7.5 C3 5.2 4.6 3.5 7 3.5 Z "
#define QUESTION "M9.7 8.7 C9.7 5.7 14.3 5.8 14.3 8.6 C14.3 10.4 12 10.4 12 12.2 "
#define DISC "O12 12 10.2"
#define LINK                                                                                       \
    "M10.4 13.6 C8.9 12.1 8.9 9.9 10.4 8.4 L13.6 5.2 C15.1 3.7 17.4 3.7 18.8 5.2 "                 \
    "C20.3 6.6 20.3 8.9 18.8 10.4 L17.2 12 "                                                       \
    "M13.6 10.4 C15.1 11.9 15.1 14.1 13.6 15.6 L10.4 18.8 C8.9 20.3 6.6 20.3 5.2 18.8 "            \
    "C3.7 17.4 3.7 15.1 5.2 13.6 L6.8 12 "

constexpr std::array drawings{
    Drawing{Symbol::arrowClockwise, "A12 12.5 8 340 -290 M18.2 2.6 L18.2 7.4 L13.2 7.4"},
    Drawing{Symbol::arrowUpForward, "M6.5 17.5 L17 7 M8.5 6.5 L17.5 6.5 L17.5 15.5"},
    Drawing{Symbol::arrowUpForwardCircleFill, "", DISC,
        "M8.4 15.6 L15.2 8.8 M9.8 8.4 L15.6 8.4 L15.6 14.2"},
    Drawing{Symbol::bellBadge,
        "M12 4 C8.6 4 6.8 6.4 6.8 9.6 C6.8 13 6 14.6 4.6 16.6 L19.4 16.6 C18.2 15 17.5 13.8 "
        "17.3 11.8 M10 19.8 C10.6 21 13.4 21 14 19.8",
        "O17.2 6.2 3.2"},
    Drawing{Symbol::bellBadgeFill, "",
        "M12 3 C7.9 3 5.8 5.9 5.8 9.6 C5.8 13 5 14.6 3.6 17 L20.4 17 C19 15 18.2 13 18.1 10.6 "
        "C15.4 10.8 13.2 8.9 13.2 6.2 C13.2 5 13.6 4 14.2 3.2 C13.5 3.1 12.8 3 12 3 Z "
        "M9 18.8 L15 18.8 C14.6 21.8 9.4 21.8 9 18.8 Z O17.6 6.2 3.2"},
    Drawing{Symbol::checkmark, "M4.8 12.8 L9.8 17.8 L19.2 6.6"},
    Drawing{Symbol::checkmarkCircleFill, "", DISC, "M7.4 12.4 L10.7 15.7 L16.6 8.8"},
    Drawing{Symbol::checkmarkShield, SHIELD "M8.2 12 L11 14.9 L15.9 9"},
    Drawing{Symbol::checkmarkShieldFill, "", SHIELD, "M8.2 12 L11 14.9 L15.9 9"},
    Drawing{Symbol::chevronDown, "M5 8.8 L12 15.8 L19 8.8"},
    Drawing{Symbol::chevronLeft, "M15.2 5 L8.2 12 L15.2 19"},
    Drawing{Symbol::chevronRight, "M8.8 5 L15.8 12 L8.8 19"},
    Drawing{Symbol::chevronUp, "M5 15.2 L12 8.2 L19 15.2"},
    Drawing{Symbol::circleDashed,
        "A12 12 9.2 12 36 A12 12 9.2 72 36 A12 12 9.2 132 36 A12 12 9.2 192 36 A12 12 9.2 252 36 "
        "A12 12 9.2 312 36"},
    Drawing{Symbol::clock, "O12 12 9.2 M12 6.8 L12 12.2 L15.6 14.2"},
    Drawing{Symbol::clockArrowCirclepath,
        "A12.8 12 8.8 190 -320 M1.6 10.7 L4 13.7 L7 11.4 M12.8 7 L12.8 12.2 L16.2 14.2"},
    Drawing{Symbol::cursorarrowMotionlines, "M9.5 5.6 L9.5 18.2 L12.6 15.4 L14.6 19.8 L16.6 18.9 "
                                            "L14.7 14.6 L18.8 14.4 Z M2.8 7.6 L5.8 7.6 "
                                            "M2.2 12 L5.8 12 M2.8 16.4 L5.8 16.4"},
    Drawing{Symbol::docOnDoc,
        "R8.4 7.8 11.4 13.4 2.4 M15.4 4.6 C15.1 3.4 14.3 2.8 13.2 2.8 L6.6 2.8 C5.1 2.8 4.2 3.7 "
        "4.2 5.2 L4.2 14.2 C4.2 15.4 4.7 16.1 5.6 16.4"},
    Drawing{Symbol::ellipsisCircle, "O12 12 9.2", "O7.8 12 1.25 O12 12 1.25 O16.2 12 1.25"},
    Drawing{Symbol::exclamationmarkCircleFill, "", DISC, "M12 6.8 L12 13 O12 16.8 0.25"},
    Drawing{Symbol::exclamationmarkShield, SHIELD "M12 7.4 L12 12.6", "O12 16.2 1.25"},
    Drawing{Symbol::exclamationmarkTriangleFill, "",
        "M12 2.8 C12.9 2.8 13.5 3.3 13.9 4 L22 18.2 C22.8 19.7 21.9 21.2 20.2 21.2 L3.8 21.2 C2.1 "
        "21.2 "
        "1.2 19.7 2 18.2 L10.1 4 C10.5 3.3 11.1 2.8 12 2.8 Z",
        "M12 8.6 L12 14 O12 17.4 0.25"},
    Drawing{Symbol::folder,
        "M3 7.4 C3 5.9 3.9 5 5.4 5 L9 5 L11.2 7.4 L18.6 7.4 C20.1 7.4 21 8.3 21 9.8 L21 16.6 C21 "
        "18.1 20.1 19 18.6 19 L5.4 19 C3.9 19 3 18.1 3 16.6 Z"},
    Drawing{Symbol::handRaised, "M7 13.9 L7 6.8 C7 5.2 9.4 5.2 9.4 6.8 L9.4 11 M9.4 6.8 L9.4 4.4 "
                                "C9.4 2.8 11.9 2.8 11.9 4.4 L11.9 10.8 "
                                "M11.9 5 C11.9 3.4 14.4 3.4 14.4 5 L14.4 11 M14.4 7 C14.4 5.4 16.9 "
                                "5.4 16.9 7 L16.9 14.5 C16.9 "
                                "18.8 14.8 21.4 11.6 21.4 C8.9 21.4 7.4 20 6 17.6 L3.9 13.8 C3.2 "
                                "12.3 5 11.3 6 12.5 L7 13.9"},
    Drawing{Symbol::handTap,
        "M9.4 14.6 L9.4 7.6 C9.4 5.7 12.3 5.7 12.3 7.6 L12.3 12 L16.6 13 C18.2 13.4 18.9 14.3 18.7 "
        "15.8 L18.2 18.9 C17.9 20.7 16.9 21.6 15.2 21.6 L12.6 21.6 C11.2 21.6 10.4 21.2 9.6 20.2 "
        "L5.9 15.7 C4.9 14.2 6.7 12.8 8 13.9 L9.4 15.2 A10.85 7.4 5.3 205 -230"},
    Drawing{Symbol::link, LINK},
    Drawing{Symbol::linkBadgePlus, LINK "M19.4 16.4 L19.4 22 M16.6 19.2 L22.2 19.2"},
    Drawing{Symbol::lock, "M8 10.4 L8 7.4 C8 2 16 2 16 7.4 L16 10.4", "R5 10.4 14 10.4 2.4"},
    Drawing{Symbol::macwindow, "R2.8 4.4 18.4 15.2 2.6 M2.8 9 L21.2 9",
        "O6 6.8 0.9 O8.8 6.8 0.9 O11.6 6.8 0.9"},
    Drawing{Symbol::minusCircleFill, "", DISC, "M7.4 12 L16.6 12"},
    Drawing{Symbol::power, "A12 13 8 55 -290 M12 3 L12 12"},
    Drawing{Symbol::questionmarkBubble, BUBBLE QUESTION, "O12 14.8 1.15"},
    Drawing{Symbol::questionmarkBubbleFill, "", BUBBLE, QUESTION "O12 14.8 0.25"},
    Drawing{Symbol::sliderHorizontal3,
        "M3 6 L12.6 6 O15.2 6 2.5 M17.8 6 L21 6 M3 12 L5.2 12 O7.8 12 2.5 M10.4 12 L21 12 "
        "M3 18 L12.6 18 O15.2 18 2.5 M17.8 18 L21 18"},
    Drawing{Symbol::squareStack, "R4 9 16 11.8 2.6 M6.2 5.9 L17.8 5.9 M8.6 2.8 L15.4 2.8"},
    Drawing{Symbol::xmark, "M6 6 L18 18 M18 6 L6 18"},
    Drawing{Symbol::xmarkCircleFill, "", DISC, "M8.4 8.4 L15.6 15.6 M15.6 8.4 L8.4 15.6"},
};

void addArc(QPainterPath& path, QPointF centre, double radius, double angle, double sweep)
{
    const QRectF circle(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    path.arcMoveTo(circle, angle);
    path.arcTo(circle, angle, sweep);
}

QPainterPath parsed(const char* commands)
{
    QPainterPath path;
    std::istringstream in(commands);
    const auto number = [&in] {
        double value = 0;
        in >> value;
        return value;
    };
    const auto point = [&number] {
        const double x = number();
        return QPointF(x, number());
    };
    for (char command = 0; in >> command;) {
        if (command == 'Z') {
            path.closeSubpath();
            continue;
        }
        const auto at = point();
        if (command == 'M') {
            path.moveTo(at);
        } else if (command == 'L') {
            path.lineTo(at);
        } else if (command == 'C') {
            const auto second = point();
            path.cubicTo(at, second, point());
        } else if (command == 'O') {
            const double radius = number();
            path.addEllipse(at, radius, radius);
        } else if (command == 'R') {
            const auto size = point();
            const double radius = number();
            path.addRoundedRect({at, QSizeF(size.x(), size.y())}, radius, radius);
        } else if (command == 'A') {
            const double radius = number();
            const auto angles = point();
            addArc(path, at, radius, angles.x(), angles.y());
        }
    }
    return path;
}

QPainterPath outlined(const char* commands)
{
    QPainterPathStroker stroker;
    stroker.setWidth(lineWidth);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(parsed(commands)).simplified();
}

QPainterPath drawn(Symbol symbol)
{
    for (const auto& drawing : drawings) {
        if (drawing.symbol == symbol)
            return parsed(drawing.areas).subtracted(outlined(drawing.gaps))
                 | outlined(drawing.lines);
    }
    return {};
}

} // namespace

const QPainterPath& symbolPath(Symbol symbol)
{
    static std::map<Symbol, QPainterPath> drawnOnce; // Main thread only, like all painting.
    const auto [entry, isNew] = drawnOnce.try_emplace(symbol);
    if (isNew)
        entry->second = drawn(symbol);
    return entry->second;
}

void paintSymbol(QPainter& painter, const QRectF& rectangle, Symbol symbol, const QColor& colour)
{
    const double side = std::min(rectangle.width(), rectangle.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rectangle.center() - QPointF(side, side) / 2);
    painter.scale(side / symbolGrid, side / symbolGrid);
    painter.fillPath(symbolPath(symbol), colour);
    painter.restore();
}

} // namespace notch
