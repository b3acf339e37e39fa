// Each operation is compared with the same drawing by a bare QPainter, pixel by pixel.
#include "ze/qt/GPC.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QPicture>

#include <functional>

#include <gtest/gtest.h>

using ze::math::Rect;
using ze::math::Segment;
using ze::math::Size;
using namespace ze::qt;

namespace {

constexpr int SIDE = 100;

// An image with the origin in the middle and y pointing up, or the plain one.
QImage painted(const std::function<void(QPainter&)>& draw, bool flagUp = true) {
    QImage image(SIDE, SIDE, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    if (flagUp) {
        painter.translate(SIDE / 2, SIDE / 2);
        painter.scale(1, -1);
    }
    draw(painter);
    return image;
}

QImage with_gpc(const std::function<void(GPC&)>& draw, bool flagUp = true) {
    return painted(
        [&draw](QPainter& painter) {
            GPC gpc(painter);
            draw(gpc);
        },
        flagUp);
}

const QImage BLANK = [] {
    QImage image(SIDE, SIDE, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}();

QPen make_pen(const QColor& color, double width, Qt::PenStyle style, bool flagCosmetic) {
    QPen pen(QBrush(color), width, style, Qt::SquareCap, Qt::BevelJoin);
    pen.setCosmetic(flagCosmetic);
    return pen;
}

// The commands that an operation gives to the painter.
QByteArray recorded(const std::function<void(GPC&)>& draw) {
    QPicture picture;
    QPainter painter(&picture);
    GPC gpc(painter);
    draw(gpc);
    painter.end();
    return {picture.data(), static_cast<qsizetype>(picture.size())};
}

// What of a painter an operation may leave changed.
struct State {
    explicit State(const QPainter& painter)
        : pen(painter.pen()),
          brush(painter.brush()),
          font(painter.font()),
          transform(painter.transform()) {}
    bool operator==(const State&) const = default;

    QPen pen;
    QBrush brush;
    QFont font;
    QTransform transform;
};

}  // namespace

TEST(GPC, fill_rect_covers_the_rectangle_from_its_lower_left_corner) {
    const QImage image = with_gpc([](GPC& gpc) { gpc.fill_rect(0, 0, 20, 10, Qt::red); });
    EXPECT_EQ(image.pixelColor(50, 49), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(69, 40), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(70, 49), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(50, 50), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(50, 39), QColor(Qt::white));
}

TEST(GPC, fill_rect_covers_the_same_where_y_points_down) {
    const QImage image =
        with_gpc([](GPC& gpc) { gpc.fill_rect(Rect(10, 20, 30, 40), Qt::red); }, false);
    EXPECT_EQ(image,
              painted([](QPainter& p) { p.fillRect(QRectF(10, 20, 30, 40), Qt::red); }, false));
}

TEST(GPC, draw_rect_takes_pen_width_style_and_cosmetic) {
    const auto expected = [](bool flagCosmetic) {
        return painted([flagCosmetic](QPainter& p) {
            p.scale(3, 3);
            p.setPen(make_pen(Qt::red, 2, Qt::DotLine, flagCosmetic));
            const QRectF rect(-5, 10, 10, -15);
            p.drawRects(&rect, 1);
        });
    };
    const auto drawn = [](Cosmetic cosmetic) {
        return with_gpc([cosmetic](GPC& gpc) {
            gpc.scale(3);
            gpc.draw_rect(-5, -5, 10, 15, Qt::red, 2, Qt::DotLine, cosmetic);
        });
    };
    EXPECT_EQ(drawn(COSMETIC_OFF), expected(false));
    EXPECT_EQ(drawn(COSMETIC_ON), expected(true));
    EXPECT_EQ(drawn(static_cast<Cosmetic>(2)), expected(false));
    EXPECT_NE(expected(true), expected(false));
}

TEST(GPC, lines_are_drawn_alike_by_all_forms) {
    const QImage expected = painted([](QPainter& p) {
        p.setPen(make_pen(Qt::red, 3, Qt::SolidLine, false));
        p.drawLine(QPointF(-10, 5), QPointF(20, 30));
    });
    EXPECT_EQ(expected, with_gpc([](GPC& gpc) {
                  gpc.draw_line(glm::vec2(-10, 5), glm::vec2(20, 30), Qt::red, 3, Qt::SolidLine,
                                COSMETIC_OFF);
              }));
    EXPECT_EQ(expected, with_gpc([](GPC& gpc) {
                  gpc.draw_line(-10, 5, 20, 30, Qt::red, 3, Qt::SolidLine, COSMETIC_OFF);
              }));
    EXPECT_EQ(expected, with_gpc([](GPC& gpc) {
                  gpc.draw_line(Segment(-10, 5, 20, 30), Qt::red, 3, Qt::SolidLine, COSMETIC_OFF);
              }));
    EXPECT_EQ(expected, with_gpc([](GPC& gpc) {
                  gpc.set_pen(Qt::red, 3, Qt::SolidLine, COSMETIC_OFF);
                  gpc.draw_line_direct({-10, 5}, {20, 30});
              }));
}

TEST(GPC, circles_and_ovals_stand_around_their_centre) {
    struct Row {
        const char* name;
        std::function<void(GPC&)> draw;
        bool flagFilled;
        QRectF rect;
    };
    const std::vector<Row> rows{
        {"fill_circle",
         [](GPC& g) {
             g.fill_circle({5, 6}, 10, Qt::red);
         },
         true,
         {-5, -4, 20, 20}},
        {"fill_circle floats",
         [](GPC& g) { g.fill_circle(5, 6, 10, Qt::red); },
         true,
         {-5, -4, 20, 20}},
        {"fill_oval",
         [](GPC& g) {
             g.fill_oval({5, 6}, 20, 10, Qt::red);
         },
         true,
         {-5, 1, 20, 10}},
        {"fill_oval floats",
         [](GPC& g) { g.fill_oval(5, 6, 20, 10, Qt::red); },
         true,
         {-5, 1, 20, 10}},
        {"draw_circle",
         [](GPC& g) {
             g.draw_circle({5, 6}, 10, Qt::red, 2, Qt::DashLine, COSMETIC_ON);
         },
         false,
         {-5, -4, 20, 20}},
        {"draw_circle floats",
         [](GPC& g) { g.draw_circle(5, 6, 10, Qt::red, 2, Qt::DashLine, COSMETIC_ON); },
         false,
         {-5, -4, 20, 20}},
        {"draw_oval",
         [](GPC& g) {
             g.draw_oval({5, 6}, 20, 10, Qt::red, 2, Qt::DashLine, COSMETIC_ON);
         },
         false,
         {-5, 1, 20, 10}},
        {"draw_oval floats",
         [](GPC& g) { g.draw_oval(5, 6, 20, 10, Qt::red, 2, Qt::DashLine, COSMETIC_ON); },
         false,
         {-5, 1, 20, 10}},
    };
    for (const Row& row : rows) {
        const QImage expected = painted([&row](QPainter& p) {
            p.setPen(row.flagFilled ? QPen(Qt::NoPen) : make_pen(Qt::red, 2, Qt::DashLine, true));
            p.setBrush(row.flagFilled ? QBrush(Qt::red) : QBrush(Qt::NoBrush));
            p.drawEllipse(row.rect);
        });
        EXPECT_EQ(with_gpc(row.draw), expected) << row.name;
    }
}

TEST(GPC, a_circle_or_oval_without_an_area_is_not_drawn_at_all) {
    const std::vector<std::function<void(GPC&)>> draws{
        [](GPC& g) { g.fill_circle(0, 0, 0, Qt::red); },
        [](GPC& g) { g.fill_circle(0, 0, -5, Qt::red); },
        [](GPC& g) { g.draw_circle(0, 0, 0, Qt::red, 2, Qt::SolidLine, COSMETIC_OFF); },
        [](GPC& g) { g.draw_circle(0, 0, -5, Qt::red, 2, Qt::SolidLine, COSMETIC_OFF); },
        [](GPC& g) { g.fill_oval(0, 0, 10, 0, Qt::red); },
        [](GPC& g) { g.fill_oval(0, 0, 0, 10, Qt::red); },
        [](GPC& g) { g.fill_oval(0, 0, -1, 10, Qt::red); },
        [](GPC& g) { g.draw_oval(0, 0, 10, 0, Qt::red, 2, Qt::SolidLine, COSMETIC_OFF); },
        [](GPC& g) { g.draw_oval(0, 0, 0, 10, Qt::red, 2, Qt::SolidLine, COSMETIC_OFF); },
        [](GPC& g) { g.draw_oval(0, 0, -1, 10, Qt::red, 2, Qt::SolidLine, COSMETIC_OFF); },
    };
    const QByteArray nothing = recorded([](GPC&) {});
    for (std::size_t i = 0; i < draws.size(); ++i) {
        EXPECT_EQ(recorded(draws[i]), nothing) << i;
    }
}

TEST(GPC, text_stands_upright_above_at_and_below_its_y) {
    struct Row {
        TextAlignY alignY;
        std::function<double(const QFontMetricsF&)> offset;
    };
    const std::vector<Row> rows{
        {BASELINE,
         [](const QFontMetricsF&) {
             return 0.0;
         }},
        {TOP,
         [](const QFontMetricsF& metrics) {
             return metrics.ascent();
         }},
        {BOTTOM,
         [](const QFontMetricsF& metrics) {
             return -metrics.descent();
         }},
    };
    for (const Row& row : rows) {
        const QImage expected = painted([&row](QPainter& p) {
            QFont font = p.font();
            font.setPointSize(14);
            p.setFont(font);
            p.setPen(Qt::red);
            p.translate(-30, 10);
            p.scale(1, -1);
            p.drawText(QPointF(0, row.offset(QFontMetricsF(p.font()))), QStringLiteral("Qjy"));
        });
        const QImage drawn = with_gpc([&row](GPC& gpc) {
            gpc.draw_text({-30, 10}, QStringLiteral("Qjy"), 14, Qt::red, row.alignY);
        });
        EXPECT_EQ(drawn, expected) << row.alignY;
        EXPECT_NE(drawn, BLANK) << row.alignY;
    }
}

TEST(GPC, the_float_form_of_text_stands_on_the_baseline_always) {
    const auto text = [](TextAlignY alignY) {
        return with_gpc(
            [alignY](GPC& g) { g.draw_text(-30, 10, QStringLiteral("Qjy"), 14, Qt::red, alignY); });
    };
    const QImage baseline = with_gpc([](GPC& gpc) {
        gpc.draw_text({-30, 10}, QStringLiteral("Qjy"), 14, Qt::red, BASELINE);
    });
    EXPECT_EQ(text(TOP), baseline);
    EXPECT_EQ(text(BOTTOM), baseline);
}

TEST(GPC, text_with_an_unknown_alignment_draws_nothing_and_restores_the_painter) {
    const QImage image = painted([](QPainter& painter) {
        GPC gpc(painter);
        const State before(painter);
        gpc.draw_text({0, 0}, QStringLiteral("text"), 14, Qt::red, static_cast<TextAlignY>(3));
        EXPECT_EQ(State(painter), before);
    });
    EXPECT_EQ(image, BLANK);
}

TEST(GPC, text_on_the_screen_is_drawn_at_its_point) {
    const QImage plain =
        with_gpc([](GPC& gpc) { gpc.draw_text_screen(10, 40, QStringLiteral("text")); }, false);
    EXPECT_EQ(
        plain,
        painted([](QPainter& p) { p.drawText(QPointF(10, 40), QStringLiteral("text")); }, false));
    const QImage sized = with_gpc(
        [](GPC& gpc) {
            gpc.draw_text_screen({10, 40}, QStringLiteral("text"), 20, Qt::red);
        },
        false);
    EXPECT_EQ(sized, painted(
                         [](QPainter& p) {
                             QFont font = p.font();
                             font.setPointSize(20);
                             p.setFont(font);
                             p.setPen(Qt::red);
                             p.drawText(QPointF(10, 40), QStringLiteral("text"));
                         },
                         false));
}

TEST(GPC, draw_string_drops_its_text) {
    EXPECT_EQ(with_gpc([](GPC& gpc) { gpc.draw_string({0, 0}, QStringLiteral("text")); }), BLANK);
    EXPECT_EQ(with_gpc([](GPC& gpc) { gpc.draw_string({0, 0}, "text"); }), BLANK);
    EXPECT_EQ(with_gpc([](GPC& gpc) {
                  gpc.draw_string({0, 0}, static_cast<const char*>(nullptr));
              }),
              BLANK);
}

TEST(GPC, every_drawing_operation_leaves_the_painter_as_it_was) {
    const std::vector<std::function<void(GPC&)>> draws{
        [](GPC& g) { g.fill_rect(0, 0, 5, 5, Qt::red); },
        [](GPC& g) { g.draw_rect(0, 0, 5, 5, Qt::red, 3, Qt::DotLine, COSMETIC_ON); },
        [](GPC& g) { g.draw_line(0, 0, 5, 5, Qt::red, 3, Qt::DotLine, COSMETIC_ON); },
        [](GPC& g) {
            g.draw_line_direct({0, 0}, {5, 5});
        },
        [](GPC& g) { g.fill_circle(0, 0, 5, Qt::red); },
        [](GPC& g) { g.draw_circle(0, 0, 5, Qt::red, 3, Qt::DotLine, COSMETIC_ON); },
        [](GPC& g) { g.fill_oval(0, 0, 5, 4, Qt::red); },
        [](GPC& g) { g.draw_oval(0, 0, 5, 4, Qt::red, 3, Qt::DotLine, COSMETIC_ON); },
        [](GPC& g) {
            g.draw_text({0, 0}, QStringLiteral("t"), 30, Qt::red, TOP);
        },
        [](GPC& g) { g.draw_text_screen(0, 0, QStringLiteral("t")); },
        [](GPC& g) {
            g.draw_text_screen({0, 0}, QStringLiteral("t"), 30, Qt::red);
        },
    };
    for (std::size_t i = 0; i < draws.size(); ++i) {
        painted([&draws, i](QPainter& painter) {
            GPC gpc(painter);
            const State before(painter);
            draws[i](gpc);
            EXPECT_EQ(State(painter), before) << i;
        });
    }
}

TEST(GPC, set_pen_stays_set) {
    painted([](QPainter& painter) {
        GPC gpc(painter);
        gpc.set_pen(Qt::red, 0.5F, Qt::DotLine, COSMETIC_ON);
        EXPECT_EQ(painter.pen(), make_pen(Qt::red, 0.5, Qt::DotLine, true));
    });
}

TEST(GPC, transforms_are_those_of_the_painter) {
    const auto transform_of = [](const std::function<void(QPainter&)>& change) {
        QTransform transform;
        painted(
            [&change, &transform](QPainter& painter) {
                change(painter);
                transform = painter.transform();
            },
            false);
        return transform;
    };
    const QTransform ours = transform_of([](QPainter& painter) {
        GPC gpc(painter);
        gpc.translate(glm::vec2(1, 2));
        gpc.translate(3.0F, 4.0F);
        gpc.translate(QPoint(5, 6));
        gpc.scale(2.0F);
        gpc.scale(3.0F, 4.0F);
        gpc.shear(0.5F, 0.25F);
        gpc.rotate(90.0F);
    });
    const QTransform bare = transform_of([](QPainter& painter) {
        painter.translate(9, 12);
        painter.scale(2, 2);
        painter.scale(3, 4);
        painter.shear(0.5, 0.25);
        painter.rotate(90);
    });
    EXPECT_EQ(ours, bare);
}

TEST(GPC, anti_alias_is_set_and_cleared) {
    painted([](QPainter& painter) {
        GPC gpc(painter);
        gpc.set_anti_alias(true);
        EXPECT_TRUE(painter.testRenderHint(QPainter::Antialiasing));
        gpc.set_anti_alias(false);
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    });
}

TEST(GPC, texts_are_measured_in_the_present_font) {
    painted([](QPainter& painter) {
        GPC gpc(painter);
        gpc.set_font_point_size(17.9F);
        EXPECT_EQ(gpc.font().pointSize(), 17);
        const QFontMetricsF metrics(painter.font());
        const QString text = QStringLiteral("some text");
        const QRectF bounds = metrics.boundingRect(text);
        EXPECT_EQ(gpc.measure_string(text),
                  Size(static_cast<float>(metrics.horizontalAdvance(text)),
                       static_cast<float>(metrics.height())));
        EXPECT_EQ(gpc.measure_string_bounds(text),
                  Size(static_cast<float>(bounds.width()), static_cast<float>(bounds.height())));
        EXPECT_EQ(gpc.line_height(), static_cast<float>(metrics.lineSpacing()));
    });
}

TEST(GPC_Guard, restores_the_painter_at_the_end_of_the_scope) {
    painted([](QPainter& painter) {
        GPC gpc(painter);
        const State before(painter);
        {
            const GPC_Guard guard(gpc);
            gpc.rotate(30);
            gpc.set_pen(Qt::red, 5, Qt::DotLine, COSMETIC_OFF);
        }
        EXPECT_EQ(State(painter), before);
    });
}

TEST(GPC_Guard, restores_the_painter_when_an_exception_passes) {
    painted([](QPainter& painter) {
        GPC gpc(painter);
        const State before(painter);
        try {
            const GPC_Guard guard(gpc);
            gpc.rotate(30);
            throw 1;
        } catch (int) {
        }
        EXPECT_EQ(State(painter), before);
    });
}
