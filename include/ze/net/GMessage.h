// A chat line, or a notice of the server about the group ("welcome", "join", "bye").
#pragma once

#include "ze/net/GAbstractMessage.h"
#include "ze/tools/GBits.h"

#include <vector>

namespace ze::net {

class GMessage : public GAbstractMessage {
public:
    QString text;
    /// Either the group's members, "a:x, a:y", or a number of flags; a message carries one of them.
    QString extraData;

    GMessage();

    [[nodiscard]] QString to_string() const override;
    void from_json(const QJsonObject& object) override;
    void to_json(QJsonObject& object) const override;

    /// The names in `extraData`; commas and blanks both separate.
    [[nodiscard]] std::vector<QString> get_user_from_extra_data() const;
    /// The same list without any entry equal to `name`.
    [[nodiscard]] std::vector<QString> get_user_from_extra_data_except(const QString& name) const;
    /// The opponent of `name`: the one other entry, or an empty string when there is none or more.
    [[nodiscard]] QString get_the_user(const QString& name) const;

    /// Overwrites `extraData` with the number as decimal text.
    void set_flags(unsigned flags);
    /// `extraData` as a decimal number; 0 if it is none or leaves 32 bits.
    [[nodiscard]] unsigned get_flags() const;
    void set_bit_flags(const GBits<unsigned>& flags);
    [[nodiscard]] GBits<unsigned> get_bit_flags() const;
};

}  // namespace ze::net
