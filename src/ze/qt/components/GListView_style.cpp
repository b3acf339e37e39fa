#include "ze/log/pp.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/themes.h"

namespace ze::qt {

void GListView::adapt_style(unsigned int theme) {
    if (theme == themes::NORMAL) {
        pp("GListView::adapt_style - NORMAL");
        setStyleSheet(create_style_GListView_normal());
    } else {
        pp("GListView::adapt_style - DARK/GREEN");
        setStyleSheet(create_style_GListView_dark());
    }
}

QString create_style_GListView_normal() {
    return QStringLiteral(
        "QListView { background: #FFFFFF; color: #000000; border: 1px solid #BBBBBB; }"
        "QListView::item { padding: 8px; border-bottom: 1px solid #E4E4E4; }"
        "QListView::item:selected { background: #4CA3E0; color: #000000; }");
}

QString create_style_GListView_dark() {
    return QStringLiteral(
        "QListView { background: #232323; color: #FFFFFF; border: 1px solid #555555; }"
        "QListView::item { padding: 8px; border-bottom: 1px solid #3A3A3A; }"
        "QListView::item:selected { background: #2A82DA; color: #000000; }");
}

}  // namespace ze::qt
