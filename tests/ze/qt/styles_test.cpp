#include "ze/qt/styles.h"

#include "support/QtPrinters.h"

#include <QSlider>

#include <gtest/gtest.h>

namespace {

TEST(Styles, each_theme_and_orientation_has_its_sheet) {
    const QString darkHorizontal = QStringLiteral(
        "QSlider::handle:horizontal {    background: #6FA8C9;    width: 30px;    height: 40px;    "
        "margin: -10px -10px;    border-radius: 10px;}QSlider::groove:horizontal {    border: 1px "
        "solid #555;    background: #2b2b2b;    height: 10px;    margin: 0px;}");
    const QString darkVertical = QStringLiteral(
        "QSlider::handle:vertical {    background: #6FA8C9;    width: 40px;    height: 30px;    "
        "margin: -10px -10px;    border-radius: 10px;}QSlider::groove:vertical {    border: 1px "
        "solid #555;    background: #2b2b2b;    width: 10px;    margin: 0px;}");
    const QString normalHorizontal = QStringLiteral(
        "QSlider::handle:horizontal {    background: #4A7B9B;    width: 30px;    height: 40px;    "
        "margin: -10px -10px;    border-radius: 10px;}QSlider::groove:horizontal {    border: 1px "
        "solid #bbb;    background: #eee;    height: 10px;    margin: 0px;}");
    const QString normalVertical = QStringLiteral(
        "QSlider::handle:vertical {    background: #4A7B9B;    width: 40px;    height: 30px;    "
        "margin: -10px -10px;    border-radius: 10px;}QSlider::groove:vertical {    border: 1px "
        "solid #bbb;    background: #eee;    width: 10px;    margin: 0px;}");
    struct Row {
        unsigned theme;
        Qt::Orientation orientation;
        QString sheet;
    };
    const Row rows[] = {
        {0, Qt::Horizontal, normalHorizontal}, {0, Qt::Vertical, normalVertical},
        {1, Qt::Horizontal, darkHorizontal},   {1, Qt::Vertical, darkVertical},
        {2, Qt::Horizontal, darkHorizontal},   {2, Qt::Vertical, darkVertical},
        {3, Qt::Horizontal, normalHorizontal}, {3, Qt::Vertical, normalVertical},
    };
    QSlider slider;
    for (const Row& row : rows) {
        ze::qt::styles::set_slider_handle(&slider, row.orientation, row.theme);
        EXPECT_EQ(slider.styleSheet(), row.sheet) << row.theme << ' ' << row.orientation;
    }
}

}  // namespace
