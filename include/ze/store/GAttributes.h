// A record of values under sorted text keys. Reads state their default and never fail loudly: a
// missing key or a value of another type gives the default and a line at trace level. Nothing
// converts between types.
#pragma once

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/store/GType.h"

#include <QString>
#include <QVariant>

#include <map>

class QDataStream;

namespace ze::store {

class GAttributes {
public:
    /// The value under `key`, or `fallback` where there is none, a null one or one of another type.
    /// T is QString, bool, int, unsigned int, QByteArray or GType.
    template <typename T>
    [[nodiscard]] T get(const QString& key, const T& fallback) const;

    /// Inserts or replaces. What is to be stored in a text must be one of the types that
    /// from_stream reads.
    void set(const QString& key, const QVariant& value) { attributes_[key] = value; }

    [[nodiscard]] bool is_flag(const QString& key, bool fallback) const {
        return get(key, fallback);
    }
    void set_flag(const QString& key, bool on) { set(key, QVariant(on)); }

    /// The plain structure under `key`: `fallback` if the key is missing, but a default T if what
    /// stands there is no T.
    template <typename T>
    [[nodiscard]] T get_pod(const QString& key, const T& fallback) const;

    /// Stores a plain structure as its bytes. A T without gtype_traits ends the program.
    template <typename T>
    void set_pod(const QString& key, const T& value);

    [[nodiscard]] bool contains(const QString& key) const { return attributes_.contains(key); }
    [[nodiscard]] std::size_t size() const noexcept { return attributes_.size(); }
    [[nodiscard]] const std::map<QString, QVariant>& attributes() const noexcept {
        return attributes_;
    }

    /// "key=value,key=value" for logs.
    [[nodiscard]] QString to_string() const;

    /// Writes the count and the pairs in key order.
    void to_stream(QDataStream& stream) const;

    /// Replaces the attributes by those of the stream; the first of two equal keys counts. Reads
    /// GType, the numbers, texts, bytes, dates, URLs, UUIDs, locales, colours and the geometry
    /// types of Qt, and lists and maps of these up to 256 deep; any other type is a read error.
    /// False after a read error, with a log line and the pairs before it.
    bool from_stream(QDataStream& stream);

private:
    std::map<QString, QVariant> attributes_;
};

template <typename T>
T GAttributes::get_pod(const QString& key, const T& fallback) const {
    if (!contains(key)) {
        pp_trace("GAttributes::get_pod, <<<$>>> not found !", key);
        return fallback;
    }
    const GType stored = get(key, GType());
    const bool fits = stored.id == gtype_traits<T>::id && stored.data.size() == sizeof(T);
    return fits ? pod_from_bytes<T>(stored.data) : T{};
}

template <typename T>
void GAttributes::set_pod(const QString& key, const T& value) {
    const GType stored{gtype_traits<T>::id, pod_to_bytes(value)};
    if (stored.id == 0) {
        exit_fatal(QStringLiteral("GAttributes::set_pod, id == 0"));
    }
    set(key, QVariant::fromValue(stored));
}

}  // namespace ze::store
