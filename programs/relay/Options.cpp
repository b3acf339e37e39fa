#include "Options.h"

#include "address.h"
#include "settings.h"

#include <fstream>

namespace relay {

namespace {

constexpr std::string_view CONFIG_VARIABLE = "VORK2D_RELAY_CONFIG";

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
    return setting ? setting->assign(options, value)
                   : "unknown setting \"" + std::string(key) + "\"";
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

std::string read_config_file(const std::string& path, Options& options) {
    std::ifstream file(path);
    std::string text;
    for (char part[4096]; file.read(part, sizeof part) || file.gcount() > 0;) {
        text.append(part, static_cast<std::size_t>(file.gcount()));
    }
    if (!file.is_open() || file.bad()) {
        return "can not read " + path;
    }
    const std::string fault = read_config(text, options);
    return fault.empty() ? fault : path + ": " + fault;
}

std::string read_environment(const Environment& environment, Options& options) {
    for (const Setting& setting : settings()) {
        if (const auto value = environment(setting.variable())) {
            if (std::string fault = setting.assign(options, *value); !fault.empty()) {
                return setting.variable() + ": " + fault;
            }
        }
    }
    return {};
}

/// The command line cut into its words; it is read last, for it is the strongest.
struct Words {
    std::vector<std::pair<std::string, std::string>> values;
    std::optional<std::string> config;
    Action action = Action::RUN;
    std::string fault;
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
    for (std::size_t i = 0; i < arguments.size() && words.fault.empty(); ++i) {
        const std::string& word = arguments[i];
        const std::size_t mark = word.find('=');
        if (const auto action = action_of(word)) {
            words.action = *action;
        } else if (!word.starts_with("--")) {
            words.fault = "\"" + word + "\" is no option";
        } else if (mark != std::string::npos) {
            words.values.emplace_back(word.substr(2, mark - 2), word.substr(mark + 1));
        } else if (i + 1 < arguments.size()) {
            words.values.emplace_back(word.substr(2), arguments[++i]);
        } else {
            words.fault = word + " needs a value";
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

/// Limits that can not hold together, or an empty text. A share of one address above the whole is
/// none: it is never met, and who lowers the whole need not know of it.
std::string contradiction_in(const Limits& limits) {
    if (limits.silence <= limits.ping) {
        return "silence-seconds has to be more than ping-seconds";
    }
    if (limits.queuedOutput < limits.frameSize) {
        return "queued-output has to be at least frame-size";
    }
    if (limits.bytesPerSecond * limits.burstSeconds < limits.frameSize) {
        return "bytes-per-second times burst-seconds has to be at least frame-size";
    }
    return {};
}

std::string fault_of(const Options& options) {
    if (options.cert.empty() != options.key.empty()) {
        return "cert and key belong together: give both or none";
    }
    for (const std::string& address : {options.listen, options.status}) {
        if (!address.empty() && !split_host_port(address)) {
            return "\"" + address + "\" is no HOST:PORT";
        }
    }
    if (options.listen.empty()) {
        return "listen needs a HOST:PORT";
    }
    return contradiction_in(options.limits);
}

std::string read_all(const Words& words, const Environment& environment, Options& options) {
    std::optional<std::string> config = words.config;
    if (!config) {
        config = environment(std::string(CONFIG_VARIABLE));
    }
    std::string fault = config ? read_config_file(*config, options) : "";
    if (fault.empty()) {
        fault = read_environment(environment, options);
    }
    for (std::size_t i = 0; i < words.values.size() && fault.empty(); ++i) {
        fault = assign(options, words.values[i].first, words.values[i].second);
    }
    return fault.empty() ? fault_of(options) : fault;
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
    result.fault = words.fault;
    if (result.fault.empty() && words.action != Action::HELP && words.action != Action::VERSION) {
        result.fault = read_all(words, environment, result.options);
    }
    return result;
}

std::string read_config(std::string_view text, Options& options) {
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        if (const std::string fault = read_line(text.substr(0, end), options); !fault.empty()) {
            return "line " + std::to_string(number) + ": " + fault;
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return {};
}

std::string to_config(const Options& options) {
    std::string text;
    for (const Setting& setting : settings()) {
        text += "# " + std::string(setting.help) + "\n";
        text += std::string(setting.key) + " = " + setting.value(options) + "\n";
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
        "  --check-config    say what is wrong with the settings, and end\n"
        "  --print-config    print the settings as a configuration file, and end\n"
        "  --help, --version\n"
        "\n"
        "An option wins over its environment variable, and that over the file. --frame-size is\n"
        "VORK2D_RELAY_FRAME_SIZE in the environment; --config is VORK2D_RELAY_CONFIG.\n"
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
