// What a login consists of, and which server it goes to.
#pragma once

#include <QString>

namespace vork2d::v5 {

/// Which server a login goes to.
namespace TYPE_URL {
enum Type : int {
    NO_TYPE = 0,      ///< none chosen
    DEVELOPMENT = 1,  ///< the development relay
    SERVER = 2,       ///< the default server
};
}  // namespace TYPE_URL

/// Part 0 or 1 of a login, which is split at every colon: its group or its user. One without a
/// colon comes back whole, with `failure` as an error line.
[[nodiscard]] QString part_of_login(const QString& login, qsizetype index, const char* failure);

class ConnData {
public:
    /// "group:user", what travels as the sender of each message.
    [[nodiscard]] virtual QString get_full_group_user() const = 0;
    [[nodiscard]] virtual QString get_user() const = 0;
    [[nodiscard]] virtual QString get_group() const = 0;
    [[nodiscard]] virtual QString get_password() const = 0;
    /// One of TYPE_URL::Type.
    [[nodiscard]] virtual int get_url_type() const = 0;
    /// The name of the server, as the player reads it.
    [[nodiscard]] virtual QString get_host() const = 0;

protected:
    ~ConnData() = default;  // nobody owns a login through this interface
};

}  // namespace vork2d::v5
