// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// One step of the reveal, from the new frame to drawn pixels, with a request on show, 480 by 300
// points at twice the scale; beside it filling as many pixels once. Off-screen unless
// QT_QPA_PLATFORM says otherwise (xcb: with the shapes and what goes to the server).

#include "Geometry/PanelGeometry.h"
#include "NotchPanel/NotchPanel.h"
#include "NotchView/NotchView.h"
#include "Rehearsal/FakeDependencies.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>
#include <memory>

namespace notch {
namespace {

constexpr double width = 480;
constexpr double height = 300;
constexpr double compactWidth = 236;
constexpr double compactHeight = 32;

// The open notch with a request on it, in a panel that is shown.
struct OpenNotch {
    FakeDependencies fakes;
    AppModel model{fakes.seams()};
    NotchPanel panel;

    OpenNotch()
    {
        model.start();
        fakes.request("A");
        model.setExpansionPresentation(true);
        auto owned = std::make_unique<NotchView>(model, fakes.time);
        owned->refresh();
        panel.setContentView(std::make_unique<NotchViewport>(
            std::move(owned), [](double, double) { return height; }));
        panel.fitContent(width, height);
        panel.applyFrame({0, 0, width, height}, width);
        panel.orderFront();
        QCoreApplication::processEvents();
    }
};

void animationStep(benchmark::State& state)
{
    OpenNotch notch;
    double shown = 0;
    for (auto _ : state) {
        shown = shown < 1 ? shown + 1.0 / 15 : 0; // As many steps as a reveal has.
        notch.panel.applyFrame({0, 0, width, compactHeight + (height - compactHeight) * shown},
            compactWidth + (width - compactWidth) * shown);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(animationStep)->Unit(benchmark::kMicrosecond);

void fillOfAsManyPixels(benchmark::State& state)
{
    QImage image(QSizeF(2 * width, 2 * height).toSize(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state)
        image.fill(Qt::black);
}
BENCHMARK(fillOfAsManyPixels)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace notch

int main(int argc, char** argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
