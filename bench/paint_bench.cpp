// The painted field beside bare QPainter. In a program of its own: where painting and the frame
// step take turns in one process, the few nanoseconds of the step double.

#include "ze/math/ViewPort.h"
#include "ze/qt/GPC.h"

#include "PlayingField.h"
#include "bare_picture.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

class Picture {
public:
    Picture() { image.fill(Qt::black); }

private:
    QImage image{800, 400, QImage::Format_ARGB32_Premultiplied};

public:
    QPainter painter{&image};
};

void paint_field(benchmark::State& state) {
    PlayingField game;
    Picture picture;
    for (auto _ : state) {
        ze::qt::GPC gpc(picture.painter);
        game.field.setup_transform(gpc, ze::math::ViewPort(800, 400));
        game.field.draw(gpc, ze::math::Rect(-400, -200, 800, 400));
    }
}

void paint_bare(benchmark::State& state) {
    Picture picture;
    for (auto _ : state) {
        bare_picture(picture.painter, {800, 400}, {0, 0});
    }
}

BENCHMARK(paint_field)->Name("field_painted/ours");
BENCHMARK(paint_bare)->Name("field_painted/peer");

}  // namespace
