// The kinds of layout that a panel can have.
#pragma once

namespace ze::qt {

enum class GLAYOUT : unsigned {
    VERTICAL = 0,    ///< QVBoxLayout
    HORIZONTAL = 1,  ///< QHBoxLayout
    FLOW = 2,        ///< GFlowLayout, rows that wrap
    STACKED = 3,     ///< QStackedLayout, one page at a time
    GRID = 4,        ///< QGridLayout
    FORM = 5,        ///< QFormLayout
};

}  // namespace ze::qt
