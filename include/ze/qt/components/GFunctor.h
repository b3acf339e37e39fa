// A function with the text under which a user chooses it.
#pragma once

#include <QString>

#include <functional>

namespace ze::qt {

struct GFunctor {
    QString text;
    std::function<void()> fn;  ///< may be empty
};

}  // namespace ze::qt
