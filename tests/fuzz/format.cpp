// The input is a format, and behind zero bytes the texts and numbers that go into it.

#include "ze/tools/format.h"

#include "support/check.h"

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace str = ze::str;

namespace {

/// A slow formatter, to compare with: each `$` gives way to the next text, as long as there is one.
std::string replaced(const std::string& format, const std::vector<std::string>& texts) {
    std::string out;
    auto next = texts.begin();
    for (const char c : format) {
        if (c == '$' && next != texts.end()) {
            out += *next++;
        } else {
            out += c;
        }
    }
    return out;
}

/// The bytes up to the next zero byte, or all that are left.
std::string take_text(std::string& bytes) {
    const std::string text = bytes.substr(0, bytes.find('\0'));
    bytes.erase(0, text.size() + 1);
    return text;
}

template <typename T>
T take_number(std::string& bytes) {
    T number{};
    std::memcpy(&number, bytes.data(), std::min(sizeof(T), bytes.size()));
    bytes.erase(0, sizeof(T));
    return number;
}

void check_texts(const std::string& format, const std::string& a, const std::string& b) {
    const QString wide = QString::fromStdString(b);
    const std::string expected = replaced(format, {a, a, str::to_utf8(wide)});
    FUZZ_CHECK(str::xprintF(0, format.c_str(), a, a.c_str(), wide) == expected);
    FUZZ_CHECK(str::xprintF(3, format.c_str(), a, a.c_str(), wide) == "   " + expected);
    FUZZ_CHECK(str::qprintF(format.c_str(), a, a, wide) == QString::fromStdString(expected));
    std::stringstream stream;
    str::streamIt(stream, format.c_str(), a, a, wide);
    FUZZ_CHECK(stream.str() == expected);
    FUZZ_CHECK(str::xprintF(0, format.c_str()) == format);
}

void check_numbers(const std::string& format, std::string bytes) {
    const auto real = take_number<double>(bytes);
    const auto whole = take_number<long long>(bytes);
    const auto small = take_number<float>(bytes);
    const std::string expected =
        replaced(format, {str::xprintF(0, "$", real), std::to_string(whole),
                          str::xprintF(0, "$", small), str::xprintF(0, "$,$", real, real)});
    FUZZ_CHECK(str::xprintF(0, format.c_str(), real, whole, small, QPointF(real, real)) ==
               expected);
}

void check_values(const std::string& format, const std::string& bytes) {
    const QVariant text(QString::fromStdString(bytes));
    const QVariant dump(QByteArray::fromStdString(bytes));
    const std::string expected =
        replaced(format, {str::xprintF(0, "$", text), str::xprintF(0, "$", dump)});
    FUZZ_CHECK(str::xprintF(0, format.c_str(), text, dump) == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string format = take_text(bytes);
    check_numbers(format, bytes);
    check_values(format, bytes);
    const std::string first = take_text(bytes);
    check_texts(format, first, take_text(bytes));
    return 0;
}
