#include "ze/net/GPong.h"

#include "ze/net/MSG_TYPE.h"
#include "ze/tools/format.h"

namespace ze::net {

GPong::GPong() : GAbstractMessage(MSG_TYPE::PONG) {}

QString GPong::to_string() const {
    return str::qprintF("PONG, from:'$', to:'$'", from, to);
}

}  // namespace ze::net
