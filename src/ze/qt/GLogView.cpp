#include "ze/qt/GLogView.h"

#include "ze/log/pp.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/themes.h"

#include <QColor>
#include <QMap>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace ze::qt {

namespace {

constexpr int MAX_LINES = 20000;
constexpr int MAX_CHARACTERS = 4000;  // of one line: a message off the wire can be megabytes
constexpr int LEVEL_OF_BACKGROUND =
    3;  // most lines are debug lines: the empty part looks like them

using ColorTable = QMap<int, QColor>;  // by log level

ColorTable bgNormal;
ColorTable fgNormal;
ColorTable bgDark;
ColorTable fgDark;
ColorTable bgGreen;
ColorTable fgGreen;

void fill_normal() {
    const QColor gray = QColor(Qt::lightGray).lighter(120);
    bgNormal = {{0, QColor(Qt::red).lighter(150)},
                {1, QColor(Qt::yellow).lighter(180)},
                {2, QColor(Qt::green).lighter(180)},
                {3, gray},
                {4, gray}};
    fgNormal = {{0, Qt::black},
                {1, Qt::black},
                {2, Qt::black},
                {3, Qt::black},
                {4, QColor(Qt::blue).darker(200)}};
}

void fill_dark() {
    bgDark = {{0, QColor(Qt::red).darker(200)},
              {1, Qt::black},
              {2, Qt::black},
              {3, Qt::black},
              {4, Qt::black}};
    fgDark = {{0, Qt::white},
              {1, Qt::yellow},
              {2, QColor(Qt::green).lighter(150)},
              {3, Qt::lightGray},
              {4, QColor(Qt::yellow).darker(200)}};
}

void fill_green() {
    const QColor green(QStringLiteral("#192819"));
    bgGreen = {{0, QColor(Qt::red).lighter(150)}, {1, green}, {2, green}, {3, green}, {4, green}};
    fgGreen = {{0, Qt::black},
               {1, Qt::black},
               {2, QColor(Qt::yellow).darker(200)},
               {3, QColor(200, 200, 200)},
               {4, QColor(Qt::yellow).darker(200)}};
}

struct Tables {
    const ColorTable* background = nullptr;
    const ColorTable* foreground = nullptr;
};

Tables tables_of(unsigned mode) {
    switch (mode) {
        case themes::NORMAL:
            return {&bgNormal, &fgNormal};
        case themes::DARK:
            return {&bgDark, &fgDark};
        case themes::GREEN:
            return {&bgGreen, &fgGreen};
        default:
            return {};
    }
}

/// The colours of one level: the text's, and the line's over the whole width.
struct LineFormat {
    QTextCharFormat text;
    QTextBlockFormat line;
};

LineFormat make_format(unsigned mode, int level) {
    QColor background = Qt::black;
    QColor foreground = Qt::white;
    const Tables tables = tables_of(mode);
    if (tables.background != nullptr) {
        background = tables.background->value(level, background);
        foreground = tables.foreground->value(level, foreground);
    }
    LineFormat format;
    format.text.setForeground(foreground);
    format.line.setBackground(background);
    return format;
}

bool is_virgin(const QTextDocument& document) {
    return document.blockCount() == 1 && document.firstBlock().text().isEmpty();
}

/// No more of a line than is shown, and no half of a character at its end.
QString head_of(const QString& text) {
    qsizetype length = std::min<qsizetype>(text.size(), MAX_CHARACTERS);
    if (length < text.size() && text[length - 1].isHighSurrogate()) {
        --length;
    }
    return text.left(length);
}

void insert_line(QTextCursor& cursor, const QString& text, const LineFormat& format) {
    if (is_virgin(*cursor.document())) {
        cursor.setBlockFormat(format.line);
    } else {
        cursor.insertBlock(format.line);
    }
    cursor.insertText(head_of(text), format.text);
}

}  // namespace

GLogView::GLogView() : GPlainTextEdit(QString()) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    fill_normal();
    fill_dark();
    fill_green();
    setReadOnly(true);
    document()->setUndoRedoEnabled(false);
    setMaximumBlockCount(MAX_LINES);
}

void GLogView::adapt_to_settings(unsigned mode) {
    colorMode = mode;
    const ColorTable* background = tables_of(mode).background;
    set_bg((background == nullptr ? bgNormal : *background).value(LEVEL_OF_BACKGROUND));
}

void GLogView::append_line(const QString& text, int level) {
    const Line line{text, level};
    append_lines({&line, 1});
}

void GLogView::append_lines(std::span<const Line> lines) {
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::End);
    const int horizontal = horizontalScrollBar()->value();
    cursor.beginEditBlock();  // laid out once, at its end
    for (const Line& line : lines.last(std::min<std::size_t>(lines.size(), MAX_LINES))) {
        insert_line(cursor, line.text, make_format(colorMode, line.level));
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(auto_scroll_left ? 0 : horizontal);
}

void GLogView::mouseDoubleClickEvent(QMouseEvent* event) {
    ze::pp("GLogView::mouseDoubleClickEvent, e:$", event::mouse::to_string(event));
}

}  // namespace ze::qt
