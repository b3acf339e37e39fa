// The bytes of a plain structure with a numeric type id, so that a structure can live in a
// QVariant, and with it in attributes, settings and streams. Tied to the structure's layout and the
// machine's byte order. A new structure needs one gtype_traits specialisation and one reg_
// variable.
#pragma once

#include "ze/log/LogConfig.h"
#include "ze/tools/format.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include <algorithm>
#include <any>
#include <cstring>
#include <functional>
#include <type_traits>
#include <unordered_map>

#include <glm/mat4x4.hpp>

class QDataStream;

namespace ze::store {

/// The id under which a structure is stored; 0: the structure has none and cannot be stored.
template <typename T>
struct gtype_traits {
    static constexpr unsigned id = 0;
};

template <>
struct gtype_traits<log::LogConfig> {
    static constexpr unsigned id = 99;
};

template <>
struct gtype_traits<glm::mat4> {
    static constexpr unsigned id = 500;
};

struct GType {
    unsigned id = 0;  ///< 0: empty
    QByteArray data;  ///< the structure as it lay in memory

    /// The structure that `data` holds, as the type registered under `id`; empty for an unknown id.
    [[nodiscard]] std::any create() const { return create(id); }

    /// The same, read as the type of `otherId`, which need not be this object's own.
    [[nodiscard]] std::any create(unsigned otherId) const;

    /// The structure as text; for an id that is not registered a log line and "GType{id:1,
    /// size:2}".
    [[nodiscard]] QString to_string() const;

    void to_QDataStream(QDataStream& stream) const;

    /// A bad stream leaves its status set, and this object as read so far.
    void from_QDataStream(QDataStream& stream);

    [[nodiscard]] bool operator==(const GType&) const = default;
};

QDataStream& operator<<(QDataStream& stream, const GType& value);
QDataStream& operator>>(QDataStream& stream, GType& value);

/// Lets streams name the type "zek::store::GType" as well; texts are always written with
/// "ze::store::GType", which needs no call.
void register_second_type_name();

using CreateRegistry = std::unordered_map<unsigned, std::function<std::any(const QByteArray&)>>;
using FormatRegistry = std::unordered_map<unsigned, std::function<QString(const std::any&)>>;

/// Written before main only, so that reading needs no lock.
CreateRegistry& create_registry();
FormatRegistry& format_registry();

/// Makes every byte of a structure that came from outside valid for its field; most fields take any
/// byte.
template <typename T>
void mend_pod(T&) {}

template <>
void mend_pod(log::LogConfig& config);

/// A default T with the bytes laid over it. Bytes that are missing keep the default, surplus ones
/// are left.
template <typename T>
[[nodiscard]] T pod_from_bytes(const QByteArray& bytes) {
    static_assert(std::is_trivially_copyable_v<T>, "only plain structures can be stored as bytes");
    T value{};
    std::memcpy(&value, bytes.constData(),
                std::min(sizeof(T), static_cast<std::size_t>(bytes.size())));
    mend_pod(value);
    return value;
}

/// The structure as it lies in memory. Padding is cleared where the compiler can, so that equal
/// structures are stored as equal bytes.
template <typename T>
[[nodiscard]] QByteArray pod_to_bytes(T value) {
    static_assert(std::is_trivially_copyable_v<T>, "only plain structures can be stored as bytes");
#if defined(__has_builtin) && __has_builtin(__builtin_clear_padding)
    __builtin_clear_padding(&value);
#endif
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof(T));
}

/// How a structure of this type shows in logs.
template <typename T>
[[nodiscard]] QString pod_to_text(const T& value) {
    return str::qprintF("$", value);
}

template <>
QString pod_to_text(const glm::mat4&);

template <typename T>
void register_type() {
    create_registry()[gtype_traits<T>::id] = [](const QByteArray& bytes) {
        return std::any(pod_from_bytes<T>(bytes));
    };
}

/// Returns 1, so that it can initialise a variable.
template <typename T>
int register_gtype() {
    register_type<T>();
    format_registry()[gtype_traits<T>::id] = [](const std::any& value) {
        return pod_to_text(std::any_cast<const T&>(value));
    };
    return 1;
}

// Inline variables run their initialiser in every program part that includes this header; GType.cpp
// does, so that a program which reaches GType out of a static library has them too.
inline const int reg_LogConfig = register_gtype<log::LogConfig>();
inline const int reg_matrix4 = register_gtype<glm::mat4>();

}  // namespace ze::store
