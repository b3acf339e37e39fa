// A login over two line edits, the first of which holds the whole "group:name". It names no server,
// so that only a class derived from it can be made.
#pragma once

#include "ConnData.h"

namespace ze::qt {
class GLineEdit;
}

namespace vork2d::v5 {

class ConnDataWin : public ConnData {
public:
    /// Neither edit is owned; both must outlive this object.
    ConnDataWin(ze::qt::GLineEdit* groupUser, ze::qt::GLineEdit* password);

    [[nodiscard]] QString get_full_group_user() const override;
    /// The part behind the first colon; without a colon the whole text and an error line.
    [[nodiscard]] QString get_user() const override;
    /// The part before the first colon; without a colon the whole text and an error line.
    [[nodiscard]] QString get_group() const override;
    [[nodiscard]] QString get_password() const override;
    [[nodiscard]] int get_url_type() const override;

protected:
    ~ConnDataWin() = default;

private:
    ze::qt::GLineEdit* editGroupUser;
    ze::qt::GLineEdit* editPassword;
};

}  // namespace vork2d::v5
