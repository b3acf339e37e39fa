// What a host can set: as an option, in the environment, or in a file; the first of these that says
// something counts.
#pragma once

#include "Certificate.h"
#include "Limits.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace relay {

struct Options {
    std::string listen = "127.0.0.1:8888";
    std::string cert;    ///< empty: the relay's own, from the state folder
    std::string key;     ///< belongs to `cert`
    std::string status;  ///< HOST:PORT of /health and /metrics, empty for none
    std::string stateDir;
    Limits limits;

    [[nodiscard]] CertificateFiles certificate_files() const;
};

/// What the command line asks for beside running.
enum class Action { RUN, CHECK_CONFIG, PRINT_CONFIG, HELP, VERSION };

struct CommandLine {
    Options options;
    Action action = Action::RUN;
    std::vector<std::string> faults;  ///< all that is wrong, each in one line
    /// Variables named like ours that are none: misspelled, or set by something else that uses our
    /// name, as containers do for a service. A check refuses them, a start only warns.
    std::vector<std::string> unknownVariables;
};

/// The environment's variables by name.
struct Environment {
    std::map<std::string, std::string> variables;

    /// Nothing if it is not set.
    [[nodiscard]] std::optional<std::string> operator()(const std::string& name) const {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    }
};

/// `arguments` without the program's name. Reads the configuration file if one is named.
[[nodiscard]] CommandLine read_command_line(const std::vector<std::string>& arguments,
                                            const Environment& environment);

/// The text of a configuration file: lines "key = value"; a # at the begin of a line or behind a
/// blank begins a comment. What is wrong, one fault for each bad line; the good ones count.
[[nodiscard]] std::vector<std::string> read_config(std::string_view text, Options& options);

/// Every key with its value, as a configuration file.
[[nodiscard]] std::string to_config(const Options& options);

[[nodiscard]] std::string help_text();

}  // namespace relay
