// Where a control came from. It travels beside a message, never in it.
#pragma once

namespace ze::net {

enum CONTROL_OWNER : unsigned {
    LOCAL = 0,   ///< made on this client
    REMOTE = 1,  ///< received from the socket
};

}  // namespace ze::net
