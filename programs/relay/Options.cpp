#include "Options.h"

#include "address.h"
#include "messages.h"
#include "settings.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace relay {

namespace {

constexpr std::string_view CONFIG_VARIABLE = "VORK2D_RELAY_CONFIG";
constexpr std::string_view VARIABLE_PREFIX = "VORK2D_RELAY_";
constexpr std::size_t MAX_CONFIG = 64 << 10;  ///< bytes of a file: many times all settings

using Faults = std::vector<std::string>;

void add(Faults& faults, std::string fault) {
    if (!fault.empty()) {
        faults.push_back(std::move(fault));
    }
}

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view BLANK = " \t\r";
    const std::size_t first = text.find_first_not_of(BLANK);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(BLANK) - first + 1);
}

std::string assign(Options& options, std::string_view key, std::string_view value) {
    const Setting* setting = find_setting(key);
    return setting ? setting->assign(options, value) : "unknown setting " + json_string(key);
}

/// A # inside a word, as in a path, begins no comment.
std::string_view without_comment(std::string_view line) noexcept {
    std::size_t mark = line.find('#');
    while (mark != std::string_view::npos && mark > 0 &&
           !trimmed(line.substr(mark - 1, 1)).empty()) {
        mark = line.find('#', mark + 1);
    }
    return line.substr(0, mark);
}

std::string read_line(std::string_view line, Options& options) {
    line = trimmed(without_comment(line));
    if (line.empty()) {
        return {};
    }
    const std::size_t mark = line.find('=');
    if (mark == std::string_view::npos) {
        return "a line is no \"key = value\"";
    }
    return assign(options, trimmed(line.substr(0, mark)), trimmed(line.substr(mark + 1)));
}

Faults read_config_file(const std::string& path, Options& options) {
    std::ifstream file(path);
    std::string text(MAX_CONFIG + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (!file.is_open() || file.bad()) {
        return {"can not read " + path};
    }
    if (text.size() > MAX_CONFIG) {
        return {path + " is longer than " + std::to_string(MAX_CONFIG) + " bytes"};
    }
    Faults faults = read_config(text, options);
    for (std::string& fault : faults) {
        fault = path + ": " + fault;
    }
    return faults;
}

void read_environment(const Environment& environment, Options& options, Faults& faults) {
    for (const Setting& setting : settings()) {
        if (const auto value = environment(setting.variable())) {
            if (const std::string fault = setting.assign(options, *value); !fault.empty()) {
                faults.push_back(setting.variable() + ": " + fault);
            }
        }
    }
}

std::vector<std::string> unknown_variables(const Environment& environment) {
    std::vector<std::string> names;
    for (const auto& variable : environment.variables) {
        const std::string& name = variable.first;
        const bool flagOurs = std::ranges::any_of(
            settings(), [&name](const Setting& setting) { return setting.variable() == name; });
        if (name.starts_with(VARIABLE_PREFIX) && !flagOurs && name != CONFIG_VARIABLE) {
            names.push_back(name);
        }
    }
    return names;
}

/// The command line cut into its words; it is read last, for it is the strongest.
struct Words {
    std::vector<std::pair<std::string, std::string>> values;
    std::optional<std::string> config;
    Action action = Action::RUN;
    Faults faults;
};

std::optional<Action> action_of(std::string_view word) noexcept {
    if (word == "--help" || word == "-h") {
        return Action::HELP;
    }
    if (word == "--version") {
        return Action::VERSION;
    }
    if (word == "--check-config") {
        return Action::CHECK_CONFIG;
    }
    return word == "--print-config" ? std::optional(Action::PRINT_CONFIG) : std::nullopt;
}

Words split(const std::vector<std::string>& arguments) {
    Words words;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const std::size_t mark = word.find('=');
        if (const auto action = action_of(word)) {
            words.action = *action;
        } else if (!word.starts_with("--")) {
            words.faults.push_back(json_string(word) + " is no option");
        } else if (mark != std::string::npos) {
            words.values.emplace_back(word.substr(2, mark - 2), word.substr(mark + 1));
        } else if (i + 1 < arguments.size()) {
            words.values.emplace_back(word.substr(2), arguments[++i]);
        } else {
            words.faults.push_back(word + " needs a value");
        }
    }
    std::erase_if(words.values, [&words](const auto& item) {
        if (item.first == "config") {
            words.config = item.second;
        }
        return item.first == "config";
    });
    return words;
}

std::string default_state_dir(const Environment& environment) {
    constexpr const char* NAME = "/vork2d-relay";
    // The first is set by systemd, and is a folder of this service alone.
    if (const auto folder = environment("STATE_DIRECTORY")) {
        return *folder;
    }
    if (const auto folder = environment("XDG_STATE_HOME"); folder && !folder->empty()) {
        return *folder + NAME;
    }
    return environment("HOME").value_or("") + "/.local/state" + NAME;
}

/// Limits that can not hold together. A share of one address above the whole is none: it is never
/// met, and who lowers the whole need not know of it.
void add_contradictions(const Limits& limits, Faults& faults) {
    if (limits.silence <= limits.ping) {
        faults.emplace_back("silence-seconds has to be more than ping-seconds");
    }
    if (limits.queuedOutput < limits.frameSize) {
        faults.emplace_back("queued-output has to be at least frame-size");
    }
    if (limits.bytesPerSecond * limits.burstSeconds < limits.frameSize) {
        faults.emplace_back("bytes-per-second times burst-seconds has to be at least frame-size");
    }
}

void add_address_faults(const Options& options, Faults& faults) {
    if (options.listen.empty()) {
        faults.emplace_back("listen needs a HOST:PORT");
    }
    for (const std::string& address : {options.listen, options.status}) {
        if (!address.empty() && !split_host_port(address)) {
            faults.push_back(json_string(address) + " is no HOST:PORT");
        }
    }
}

void read_all(const Words& words, const Environment& environment, Options& options,
              Faults& faults) {
    std::optional<std::string> config = words.config;
    if (!config) {
        config = environment(std::string(CONFIG_VARIABLE));
    }
    if (config) {
        faults = read_config_file(*config, options);
    }
    read_environment(environment, options, faults);
    faults.insert(faults.end(), words.faults.begin(), words.faults.end());
    for (const auto& [key, value] : words.values) {
        add(faults, assign(options, key, value));
    }
    // A default in the place of what could not be read would contradict what was.
    if (faults.empty()) {
        add_contradictions(options.limits, faults);
    }
    if (options.cert.empty() != options.key.empty()) {
        faults.emplace_back("cert and key belong together: give both or none");
    }
    add_address_faults(options, faults);
}

}  // namespace

CertificateFiles Options::certificate_files() const {
    if (!cert.empty()) {
        return {cert, key, false};
    }
    return {stateDir + "/certificate.pem", stateDir + "/key.pem", true};
}

CommandLine read_command_line(const std::vector<std::string>& arguments,
                              const Environment& environment) {
    CommandLine result;
    result.options.stateDir = default_state_dir(environment);
    const Words words = split(arguments);
    result.action = words.action;
    if (words.action == Action::HELP || words.action == Action::VERSION) {
        result.faults = words.faults;
        return result;
    }
    read_all(words, environment, result.options, result.faults);
    result.unknownVariables = unknown_variables(environment);
    return result;
}

std::vector<std::string> read_config(std::string_view text, Options& options) {
    Faults faults;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        if (const std::string fault = read_line(text.substr(0, end), options); !fault.empty()) {
            faults.push_back("line " + std::to_string(number) + ": " + fault);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return faults;
}

std::string to_config(const Options& options) {
    std::string text;
    for (const Setting& setting : settings()) {
        const std::string value = setting.value(options);
        text += "# " + std::string(setting.help) + "\n";
        // Behind a blank a # would begin a comment.
        text += std::string(setting.key) + (value.starts_with('#') ? " =" : " = ") + value + "\n";
    }
    return text;
}

std::string help_text() {
    std::string text =
        "usage: vork2d-relay [--OPTION VALUE]...\n"
        "\n"
        "Brings two players of vork2d together and passes on what they send to each other.\n"
        "Without options it serves this machine, with a certificate that it makes itself.\n"
        "\n"
        "  --config FILE     lines \"key = value\", keys as the options below without dashes\n"
        "  --check-config    say all that is wrong with the settings, and end\n"
        "  --print-config    print the settings as a configuration file, and end\n"
        "  --help, --version\n"
        "\n"
        "An option wins over its environment variable, and that over the file. --frame-size is\n"
        "VORK2D_RELAY_FRAME_SIZE in the environment; --config is VORK2D_RELAY_CONFIG. A "
        "misspelled\n"
        "variable of that kind is warned of, and refused by --check-config.\n"
        "\n";
    const Options defaults;
    for (const Setting& setting : settings()) {
        const std::string value = setting.value(defaults);
        text += "  --" + std::string(setting.key);
        text += std::string(30 - setting.key.size(), ' ') + std::string(setting.help);
        text += (value.empty() ? "" : " [" + value + "]") + "\n";
    }
    return text + "\nSIGHUP reads the certificate again, SIGTERM and SIGINT end the relay.\n";
}

}  // namespace relay
