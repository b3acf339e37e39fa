// The typed values and nodes of the settings, and the keys they stand under.
#include "ze/store/GNode.h"
#include "ze/tools/GSettings.h"

#include <cmath>
#include <optional>
#include <utility>

namespace ze::qt {

namespace {

constexpr unsigned DEFAULT_THEME = 1;
constexpr unsigned DEFAULT_LOG_LEVEL = 0;

// A store without a version counts as newer than all the layouts before the numbering began.
constexpr unsigned DEFAULT_VERSION = 99;

QString key_app() {
    return QStringLiteral("GApplication/app");
}

QString key_window(const QString& name) {
    return QStringLiteral("Window/") + name;
}

QString key_theme() {
    return QStringLiteral("ui/theme");
}

QString key_version() {
    return QStringLiteral("config/version");
}

QString key_log_level() {
    return QStringLiteral("log/level");
}

QString key_of(const QString& key, const QObject* owner) {
    return owner == nullptr ? key : key + QLatin1Char('@') + owner->objectName();
}

// A text with a number beyond 32 bits would lose its upper half in toUInt and toInt.
std::optional<unsigned> to_uint(const QVariant& value) {
    bool ok = false;
    const qulonglong number = value.toULongLong(&ok);
    return ok && std::in_range<unsigned>(number) ? std::optional<unsigned>(number) : std::nullopt;
}

std::optional<int> to_int(const QVariant& value) {
    bool ok = false;
    const qlonglong number = value.toLongLong(&ok);
    return ok && std::in_range<int>(number) ? std::optional<int>(number) : std::nullopt;
}

template <typename T>
T read(const QVariant& value, const T& def) {
    return value.metaType() == QMetaType::fromType<T>() ? value.value<T>() : def;
}

}  // namespace

void GSettings::set_node(const QString& key, const store::GNode& node) {
    setValue(key, store::GNode::to_qstring(node));
}

store::GNode GSettings::get_node(const QString& key) const {
    // QSettings takes a text with a comma for a list. None of ours has one, but a damaged one may.
    const QString text = value(key).toStringList().join(QLatin1Char(','));
    store::GNode node = text.isEmpty() ? store::GNode() : store::GNode::from_qstring(text);
    if (contains(key) && store::GNode::to_qstring(node) != text) {
        keep_unreadable_file();
    }
    return node;
}

void GSettings::set_app_node(const store::GNode& node) {
    set_node(key_app(), node);
}

store::GNode GSettings::get_app_node() const {
    return get_node(key_app());
}

void GSettings::set_window_node(const store::GNode& node, const QString& name) {
    set_node(key_window(name), node);
}

store::GNode GSettings::get_window_node(const QString& name) const {
    return get_node(key_window(name));
}

void GSettings::set(const QString& key, const QVariant& value, const QObject* owner) {
    setValue(key_of(key, owner), value);
}

void GSettings::set(const QString& key, const Qt::GlobalColor& color, const QObject* owner) {
    set(key, QVariant(QColor(color)), owner);
}

unsigned GSettings::get_uint(const QString& key, unsigned def, const QObject* owner) const {
    return to_uint(value(key_of(key, owner))).value_or(def);
}

int GSettings::get_int(const QString& key, int def, const QObject* owner) const {
    return to_int(value(key_of(key, owner))).value_or(def);
}

float GSettings::get_float(const QString& key, float def, const QObject* owner) const {
    bool ok = false;
    const float number = value(key_of(key, owner)).toFloat(&ok);
    return ok && std::isfinite(number) ? number : def;
}

double GSettings::get_double(const QString& key, double def, const QObject* owner) const {
    bool ok = false;
    const double number = value(key_of(key, owner)).toDouble(&ok);
    return ok && std::isfinite(number) ? number : def;
}

QColor GSettings::get_color(const QString& key, QColor def, const QObject* owner) const {
    const auto color = value(key_of(key, owner)).value<QColor>();
    return color.isValid() ? color : def;
}

void GSettings::set_rect(const QString& key, const QRect& value) {
    setValue(key, value);
}

void GSettings::set_point(const QString& key, const QPoint& value) {
    setValue(key, value);
}

void GSettings::set_size(const QString& key, const QSize& value) {
    setValue(key, value);
}

QRect GSettings::get_rect(const QString& key, const QRect& def) const {
    return read(value(key), def);
}

QPoint GSettings::get_point(const QString& key, const QPoint& def) const {
    return read(value(key), def);
}

QSize GSettings::get_size(const QString& key, const QSize& def) const {
    return read(value(key), def);
}

void GSettings::set_theme(unsigned theme) {
    setValue(key_theme(), theme);
}

unsigned GSettings::get_theme() const {
    return get_uint(key_theme(), DEFAULT_THEME, nullptr);
}

void GSettings::set_config_version(unsigned version) {
    setValue(key_version(), version);
}

unsigned GSettings::get_config_version() const {
    return get_uint(key_version(), DEFAULT_VERSION, nullptr);
}

bool GSettings::has_config_version() const {
    return to_uint(value(key_version())).has_value();
}

void GSettings::set_log_level(unsigned level) {
    setValue(key_log_level(), level);
}

unsigned GSettings::get_log_level() const {
    return get_uint(key_log_level(), DEFAULT_LOG_LEVEL, nullptr);
}

}  // namespace ze::qt
