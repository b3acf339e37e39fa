#include "ze/store/GType.h"

#include "ze/log/pp.h"

#include <QDataStream>

namespace ze::store {

namespace {

// Before main, so that a reader knows the name even if this process has never written a GType.
[[maybe_unused]] const int metaTypeId = qRegisterMetaType<GType>();

}  // namespace

std::any GType::create(unsigned otherId) const {
    const CreateRegistry& registry = create_registry();
    const auto found = registry.find(otherId);
    return found == registry.end() ? std::any() : found->second(data);
}

QString GType::to_string() const {
    const FormatRegistry& registry = format_registry();
    if (const auto found = registry.find(id); found != registry.end()) {
        if (const std::any value = create(); value.has_value()) {
            return found->second(value);
        }
    }
    pp("GType::to_string - formatter id:$ not found", id);
    return str::qprintF("GType{id:$, size:$}", id, static_cast<long long>(data.size()));
}

void GType::to_QDataStream(QDataStream& stream) const {
    stream << id << data;
}

void GType::from_QDataStream(QDataStream& stream) {
    stream >> id >> data;
}

QDataStream& operator<<(QDataStream& stream, const GType& value) {
    value.to_QDataStream(stream);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, GType& value) {
    value.from_QDataStream(stream);
    return stream;
}

void register_second_type_name() {
    qRegisterMetaType<GType>("zek::store::GType");
}

CreateRegistry& create_registry() {
    static CreateRegistry registry;
    return registry;
}

FormatRegistry& format_registry() {
    static FormatRegistry registry;
    return registry;
}

// A bool may hold 0 and 1 only; a stored byte may be anything.
template <>
void mend_pod(log::LogConfig& config) {
    unsigned char scroll = 0;
    std::memcpy(&scroll, &config.autoScrollHorz, 1);
    config.autoScrollHorz = scroll != 0;
}

template <>
QString pod_to_text(const glm::mat4&) {
    return QStringLiteral("Matrix4");
}

}  // namespace ze::store
