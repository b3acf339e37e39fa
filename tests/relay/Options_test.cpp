#include "Options.h"

#include "settings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

namespace {

using relay::Action;
using relay::CommandLine;
using Variables = std::map<std::string, std::string>;

CommandLine read(const std::vector<std::string>& arguments, const Variables& variables = {}) {
    return relay::read_command_line(arguments, {variables});
}

const std::vector<std::string> NONE;

/// A configuration file for one test.
class ConfigFile {
public:
    explicit ConfigFile(const std::string& text)
        : path(std::filesystem::temp_directory_path() /
               ("relay_options." + std::to_string(getpid()) + ".conf")) {
        std::ofstream(path) << text;
    }
    ~ConfigFile() { std::filesystem::remove(path); }
    ConfigFile(const ConfigFile&) = delete;
    ConfigFile& operator=(const ConfigFile&) = delete;

    const std::filesystem::path path;
};

TEST(Options, without_anything_it_serves_this_machine) {
    const CommandLine line = read({}, {{"HOME", "/home/odo"}});
    EXPECT_EQ(line.faults, NONE);
    EXPECT_EQ(line.action, Action::RUN);
    EXPECT_EQ(line.options.listen, "127.0.0.1:8888");
    EXPECT_EQ(line.options.status, "");
    EXPECT_EQ(line.options.certificate_files().key, "/home/odo/.local/state/vork2d-relay/key.pem");
    EXPECT_TRUE(line.options.certificate_files().flagSelfSigned);
}

struct StateRow {
    Variables variables;
    const char* folder;
};

TEST(Options, the_state_folder_follows_the_environment) {
    const StateRow rows[] = {
        {{{"HOME", "/h"}}, "/h/.local/state/vork2d-relay"},
        {{{"HOME", "/h"}, {"XDG_STATE_HOME", "/s"}}, "/s/vork2d-relay"},
        {{{"HOME", "/h"}, {"XDG_STATE_HOME", ""}}, "/h/.local/state/vork2d-relay"},
        {{{"STATE_DIRECTORY", "/var/lib/x"}, {"XDG_STATE_HOME", "/s"}}, "/var/lib/x"},
        {{{"VORK2D_RELAY_STATE_DIR", "/v"}, {"STATE_DIRECTORY", "/d"}}, "/v"},
    };
    for (const StateRow& row : rows) {
        EXPECT_EQ(read({}, row.variables).options.stateDir, row.folder);
    }
}

TEST(Options, an_option_wins_over_the_environment_and_that_over_the_file) {
    const ConfigFile file("chat-length = 1\nchat-burst = 1\nframe-size = 2048\n");
    const Variables variables = {{"VORK2D_RELAY_CONFIG", file.path},
                                 {"VORK2D_RELAY_CHAT_BURST", "2"},
                                 {"VORK2D_RELAY_FRAME_SIZE", "4096"}};
    const CommandLine line = read({"--frame-size", "8192"}, variables);
    EXPECT_EQ(line.faults, NONE);
    EXPECT_EQ(line.options.limits.chatLength, 1U);
    EXPECT_EQ(line.options.limits.chatBurst, 2U);
    EXPECT_EQ(line.options.limits.frameSize, 8192U);
}

TEST(Options, both_forms_of_an_option_are_read) {
    EXPECT_EQ(read({"--listen", "[::]:1"}).options.listen, "[::]:1");
    EXPECT_EQ(read({"--listen=[::]:1"}).options.listen, "[::]:1");
}

struct ActionRow {
    const char* word;
    Action action;
};

TEST(Options, words_that_ask_for_something_else) {
    const ActionRow rows[] = {{"--help", Action::HELP},
                              {"-h", Action::HELP},
                              {"--version", Action::VERSION},
                              {"--check-config", Action::CHECK_CONFIG},
                              {"--print-config", Action::PRINT_CONFIG}};
    for (const ActionRow& row : rows) {
        EXPECT_EQ(read({row.word}).action, row.action) << row.word;
    }
}

struct FaultRow {
    std::vector<std::string> arguments;
    const char* fault;
};

TEST(Options, what_is_wrong_is_told) {
    const FaultRow rows[] = {
        {{"here"}, "\"here\" is no option"},
        {{"--listen"}, "--listen needs a value"},
        {{"--colour", "red"}, "unknown setting \"colour\""},
        {{"--listen", "8888"}, "\"8888\" is no HOST:PORT"},
        {{"--listen="}, "listen needs a HOST:PORT"},
        {{"--status", "x"}, "\"x\" is no HOST:PORT"},
        {{"--cert", "a.pem"}, "cert and key belong together: give both or none"},
        {{"--key", "a.pem"}, "cert and key belong together: give both or none"},
        {{"--frame-size", "1023"}, "frame-size takes a whole number from 1024 to 1073741824"},
        {{"--frame-size", "-1"}, "frame-size takes a whole number from 1024 to 1073741824"},
        {{"--frame-size", "2k"}, "frame-size takes a whole number from 1024 to 1073741824"},
        {{"--chat-burst", ""}, "chat-burst takes a whole number from 1 to 1000000"},
        {{"--ping-seconds", "30"}, "silence-seconds has to be more than ping-seconds"},
        {{"--frame-size", "1048577"}, "queued-output has to be at least frame-size"},
        {{"--bytes-per-second", "4095"},
         "bytes-per-second times burst-seconds has to be at least frame-size"},
        {{"--config", "/nonexistent/x"}, "can not read /nonexistent/x"},
        {{"--config", "/"}, "can not read /"},
    };
    for (const FaultRow& row : rows) {
        EXPECT_EQ(read(row.arguments).faults, std::vector<std::string>{row.fault})
            << row.arguments[0];
    }
}

TEST(Options, limits_that_just_hold_together_are_good) {
    const std::vector<std::string> rows[] = {{"--max-connections", "2"},
                                             {"--max-half-open", "2"},
                                             {"--frame-size", "1048576"},
                                             {"--bytes-per-second", "4096"},
                                             {"--ping-seconds", "29"}};
    for (const std::vector<std::string>& row : rows) {
        EXPECT_EQ(read(row).faults, NONE) << row[0];
    }
}

TEST(Options, a_wrong_variable_is_told_by_its_name) {
    EXPECT_EQ(read({}, {{"VORK2D_RELAY_CHAT_BURST", "x"}}).faults,
              std::vector<std::string>{
                  "VORK2D_RELAY_CHAT_BURST: chat-burst takes a whole number from 1 to 1000000"});
}

TEST(Options, a_file_has_comments_blank_lines_and_blanks) {
    relay::Options options;
    EXPECT_EQ(relay::read_config("# all\n\n  chat-length=7 # few\r\n\tlisten =  a:1\t\n", options),
              NONE);
    EXPECT_EQ(options.limits.chatLength, 7U);
    EXPECT_EQ(options.listen, "a:1");
}

TEST(Options, a_hash_inside_a_word_begins_no_comment) {
    relay::Options options;
    EXPECT_EQ(relay::read_config("cert = /etc/a#1.pem\t# mine\nkey=k##2 #\n#key=x", options), NONE);
    EXPECT_EQ(options.cert, "/etc/a#1.pem");
    EXPECT_EQ(options.key, "k##2");
}

TEST(Options, an_empty_file_changes_nothing) {
    const ConfigFile file("");
    EXPECT_EQ(read({"--config", file.path}).faults, NONE);
}

struct FileRow {
    const char* text;
    const char* fault;
};

TEST(Options, a_wrong_line_is_told_by_its_number) {
    const FileRow rows[] = {
        {"\n\nlisten", "line 3: a line is no \"key = value\""},
        {"colour = red", "line 1: unknown setting \"colour\""},
        {"# ok\nchat-length = many", "line 2: chat-length takes a whole number from 1 to 1000000"},
    };
    for (const FileRow& row : rows) {
        relay::Options options;
        EXPECT_EQ(relay::read_config(row.text, options), std::vector<std::string>{row.fault});
    }
}

TEST(Options, all_faults_are_told_in_their_order) {
    const ConfigFile file("colour = red\nframe-size = 2048\nchat-burst = x\n");
    EXPECT_EQ(
        read({"--config", file.path, "here", "--ping-seconds=0", "--cert", "a", "--status=x"},
             {{"VORK2D_RELAY_CHAT_LENGTH", "x"}})
            .faults,
        (std::vector<std::string>{
            file.path.string() + ": line 1: unknown setting \"colour\"",
            file.path.string() + ": line 3: chat-burst takes a whole number from 1 to 1000000",
            "VORK2D_RELAY_CHAT_LENGTH: chat-length takes a whole number from 1 to 1000000",
            "\"here\" is no option", "ping-seconds takes a whole number from 1 to 86400",
            "cert and key belong together: give both or none", "\"x\" is no HOST:PORT"}));
}

TEST(Options, limits_are_compared_only_when_all_could_be_read) {
    EXPECT_EQ(read({"--ping-seconds", "40", "--silence-seconds", "x"}).faults,
              std::vector<std::string>{"silence-seconds takes a whole number from 1 to 86400"});
}

TEST(Options, a_file_without_end_is_told) {
    EXPECT_EQ(read({"--config", "/dev/zero"}).faults,
              std::vector<std::string>{"/dev/zero is longer than 65536 bytes"});
}

TEST(Options, a_fault_is_one_line_whatever_is_wrong) {
    EXPECT_EQ(read({"--a\nb", "x"}).faults,
              std::vector<std::string>{R"(unknown setting "a\u000ab")"});
}

TEST(Options, a_misspelled_variable_is_told_by_its_name) {
    const CommandLine line = read({}, {{"VORK2D_RELAY_FRAMESIZE", "1"},
                                       {"VORK2D_RELAY_FRAME_SIZE", "2048"},
                                       {"VORK2D_RELAY_CONFIG", "/dev/null"},
                                       {"VORK2D_SERVER", "x"}});
    EXPECT_EQ(line.faults, NONE);
    EXPECT_EQ(line.unknownVariables, std::vector<std::string>{"VORK2D_RELAY_FRAMESIZE"});
}

TEST(Options, what_is_printed_reads_back_the_same) {
    relay::Options options;
    options.listen = "[::]:443";
    options.cert = "/etc/cert#1.pem";
    options.key = "#1";
    options.limits.frameSize = 5000;
    options.limits.ping = std::chrono::seconds(7);
    const std::string text = relay::to_config(options);
    relay::Options back;
    EXPECT_EQ(relay::read_config(text, back), NONE);
    EXPECT_EQ(relay::to_config(back), text);
}

/// The values of a configuration without its comments.
std::string without_comments(const std::string& config) {
    std::istringstream lines(config);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += line.starts_with('#') ? "" : line + "\n";
    }
    return text;
}

TEST(Options, the_defaults_are_these) {
    EXPECT_EQ(without_comments(relay::to_config(relay::Options())),
              "listen = 127.0.0.1:8888\n"
              "cert = \n"
              "key = \n"
              "status = \n"
              "state-dir = \n"
              "max-connections = 10000\n"
              "max-connections-per-address = 64\n"
              "max-half-open = 1024\n"
              "max-half-open-per-address = 64\n"
              "connects-per-minute = 600\n"
              "frames-per-second = 2500\n"
              "bytes-per-second = 1048576\n"
              "burst-seconds = 4\n"
              "frame-size = 16384\n"
              "queued-output = 1048576\n"
              "queued-total = 268435456\n"
              "failed-logins = 10\n"
              "failed-logins-per-group = 12\n"
              "chat-length = 500\n"
              "chat-burst = 5\n"
              "handshake-seconds = 10\n"
              "login-seconds = 10\n"
              "ping-seconds = 15\n"
              "silence-seconds = 30\n");
}

TEST(Options, help_names_every_setting) {
    const std::string help = relay::help_text();
    for (const relay::Setting& setting : relay::settings()) {
        EXPECT_NE(help.find("--" + std::string(setting.key) + " "), std::string::npos);
        EXPECT_FALSE(setting.help.empty()) << setting.key;
    }
}

TEST(Options, a_setting_has_its_variable) {
    EXPECT_EQ(relay::find_setting("max-connections-per-address")->variable(),
              "VORK2D_RELAY_MAX_CONNECTIONS_PER_ADDRESS");
    EXPECT_EQ(relay::find_setting("colour"), nullptr);
}

}  // namespace
