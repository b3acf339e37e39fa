// What a painted frame costs beside the same calls on a bare QPainter: not one allocation more.
#include "ze/qt/GPC.h"

#include <QImage>
#include <QPainter>
#include <QPen>

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <new>

#include <gtest/gtest.h>

namespace {

std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

using namespace ze::qt;

namespace {

const QString TEXT = QStringLiteral("Nilo:3");

void frame(GPC& gpc) {
    gpc.fill_rect(-400, -200, 800, 400, Qt::black);
    gpc.fill_rect(-390, -30, 10, 60, Qt::white);
    gpc.draw_text({-100, 150}, TEXT, 14, Qt::white, BASELINE);
    gpc.draw_line(-400, 0, 400, 0, Qt::white, 0.5F, Qt::DotLine, COSMETIC_ON);
}

void frame(QPainter& painter) {
    painter.fillRect(QRectF(-400, 200, 800, -400), QColor(Qt::black));
    painter.fillRect(QRectF(-390, 30, 10, -60), QColor(Qt::white));
    painter.save();
    QFont font = painter.font();
    font.setPointSize(14);
    painter.setFont(font);
    painter.setPen(QColor(Qt::white));
    painter.translate(-100, 150);
    painter.scale(1, -1);
    painter.drawText(QPointF(0, 0), TEXT);
    painter.restore();
    painter.save();
    QPen pen(QBrush(QColor(Qt::white)), 0.5, Qt::DotLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(QPointF(-400, 0), QPointF(400, 0));
    painter.restore();
}

// The second frame counts: the first one fills Qt's caches.
std::size_t allocations_of(const std::function<void(QPainter&)>& draw) {
    QImage image(800, 400, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.translate(400, 200);
    painter.scale(1, -1);
    draw(painter);
    const std::size_t before = allocations;
    draw(painter);
    return allocations - before;
}

}  // namespace

TEST(GPC, a_frame_allocates_no_more_than_the_bare_painter) {
    const std::size_t bare = allocations_of([](QPainter& painter) { frame(painter); });
    const std::size_t ours = allocations_of([](QPainter& painter) {
        GPC gpc(painter);
        frame(gpc);
    });
    EXPECT_GT(bare, 0U);
    EXPECT_EQ(ours, bare);
}
