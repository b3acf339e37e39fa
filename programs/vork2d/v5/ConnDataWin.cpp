#include "ConnDataWin.h"

#include "ze/qt/components/GLineEdit.h"

namespace vork2d::v5 {

ConnDataWin::ConnDataWin(ze::qt::GLineEdit* groupUser, ze::qt::GLineEdit* password)
    : editGroupUser(groupUser), editPassword(password) {}

QString ConnDataWin::get_full_group_user() const {
    return editGroupUser->text();
}

QString ConnDataWin::get_user() const {
    return part_of_login(get_full_group_user(), 1, "ConnDataWin::get_user, group:user ???");
}

QString ConnDataWin::get_group() const {
    return part_of_login(get_full_group_user(), 0, "ConnDataWin::get_group, group:user ???");
}

QString ConnDataWin::get_password() const {
    return editPassword->text();
}

int ConnDataWin::get_url_type() const {
    return TYPE_URL::DEVELOPMENT;
}

}  // namespace vork2d::v5
