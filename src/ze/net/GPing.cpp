#include "ze/net/GPing.h"

#include "ze/net/MSG_TYPE.h"
#include "ze/tools/format.h"

namespace ze::net {

GPing::GPing() : GAbstractMessage(MSG_TYPE::PING) {}

QString GPing::to_string() const {
    return str::qprintF("PING, from:'$', to:'$'", from, to);
}

}  // namespace ze::net
