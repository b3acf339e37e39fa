// The input is the text of a point, a size, a rectangle or a switch, and bytes to dump.

#include "ze/tools/convert.h"

#include "support/check.h"

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>
#include <string>

namespace convert = ze::convert;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const QString text = convert::to_string(bytes);

    const QPoint point = convert::QPoint_from_string(text, QPoint(7, 8));
    FUZZ_CHECK(convert::QPoint_from_string(convert::to_string(point), QPoint()) == point);
    const QSize area = convert::QSize_from_string(text, QSize(7, 8));
    FUZZ_CHECK(convert::QSize_from_string(convert::to_string(area), QSize()) == area);
    const QRect rect = convert::QRect_from_string(text, QRect(5, 6, 7, 8));
    FUZZ_CHECK(convert::QRect_from_string(convert::to_string(rect), QRect()) == rect);

    const bool is_word =
        convert::bool_from_string(text, true) == convert::bool_from_string(text, false);
    FUZZ_CHECK(!is_word || !text.trimmed().isEmpty());
    static_cast<void>(convert::to_std_string(QByteArray::fromStdString(bytes), 10));
    return 0;
}
