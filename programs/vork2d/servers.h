// The two relays that the program knows: the development relay and the default server.
// A packager sets both hosts; the command-line key "server" takes the place of the default server
// for one run.
#pragma once

#include <QString>
#include <QUrl>

namespace vork2d::servers {

/// The name under which the development relay is shown and chosen: "localhost", whatever its
/// address is.
[[nodiscard]] QString development_name();

/// The short alias that the command-line key "host" accepts for the development relay.
[[nodiscard]] QString development_alias();

/// The name under which the default server is shown and chosen: its host, with the port where one
/// was given or where the bare host would name the development relay. A command-line value that is
/// no host or host:port is returned as it is.
[[nodiscard]] QString default_name();

/// The address of the development relay.
[[nodiscard]] QUrl development_url();

/// The address of the default server; empty, with one error line, where the command line gives a
/// value that is no host or host:port.
[[nodiscard]] QUrl default_url();

}  // namespace vork2d::servers
