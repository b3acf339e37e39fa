// vork2d-relay: brings two players together and passes on what they send to each other.

#include "Log.h"
#include "LogWriter.h"
#include "Options.h"
#include "Server.h"
#include "TlsContext.h"
#include "address.h"
#include "descriptors.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

constexpr int EXIT_USAGE = 2;

relay::Environment read_environment() {
    relay::Environment environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::size_t mark = text.find('=');
        if (mark != std::string_view::npos) {
            environment.variables.emplace(text.substr(0, mark), text.substr(mark + 1));
        }
    }
    return environment;
}

int fail(const std::vector<std::string>& faults) {
    for (const std::string& fault : faults) {
        std::fprintf(stderr, "vork2d-relay: %s\n", fault.c_str());
    }
    return EXIT_USAGE;
}

/// All that would end the relay at its start, as far as can be told without starting it, and what
/// a host can not have meant.
std::vector<std::string> start_faults(const relay::CommandLine& line) {
    std::vector<std::string> faults;
    for (const std::string& name : line.unknownVariables) {
        faults.push_back("the variable " + name + " is no setting");
    }
    const relay::Options& options = line.options;
    std::string listen;
    std::string status;
    static_cast<void>(relay::resolve(options.listen, listen));
    if (!options.status.empty()) {
        static_cast<void>(relay::resolve_loopback(options.status, status));
    }
    for (const std::string& fault :
         {listen, status, relay::TlsContext::check(options.certificate_files())}) {
        if (!fault.empty()) {
            faults.push_back(fault);
        }
    }
    return faults;
}

int check(const relay::CommandLine& line) {
    if (const std::vector<std::string> faults = start_faults(line); !faults.empty()) {
        return fail(faults);
    }
    std::puts(line.options.cert.empty() ? "The settings are good."
                                        : "The settings are good, and so is the certificate.");
    return EXIT_SUCCESS;
}

int serve(const relay::CommandLine& line, const relay::Environment& environment) {
    // A log that can not be written, for want of a reader or of room, ends nothing.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    relay::raise_descriptor_limit();
    relay::LogWriter writer(STDOUT_FILENO);
    const relay::Log log([&writer](std::string_view text) { writer.write(text); });
    const relay::ServiceManager manager(environment);
    relay::Server server(line.options, log, manager);
    if (const std::string fault = server.start(); !fault.empty()) {
        return fail({fault});
    }
    writer.write(server.reach());
    for (const std::string& name : line.unknownVariables) {
        log.event("unknown_variable", {{"name", name}});
    }
    server.run();
    return EXIT_SUCCESS;
}

}  // namespace

int main(int count, char** values) {
    relay::hold_standard_descriptors();
    const relay::Environment environment = read_environment();
    relay::CommandLine line = relay::read_command_line({values + 1, values + count}, environment);
    if (!line.faults.empty()) {
        line.faults.back() += " (see --help)";
        return fail(line.faults);
    }
    switch (line.action) {
        case relay::Action::HELP:
            std::fputs(relay::help_text().c_str(), stdout);
            return EXIT_SUCCESS;
        case relay::Action::VERSION:
            std::puts("vork2d-relay " VORK2D_RELAY_VERSION);
            return EXIT_SUCCESS;
        case relay::Action::PRINT_CONFIG:
            std::fputs(relay::to_config(line.options).c_str(), stdout);
            return EXIT_SUCCESS;
        case relay::Action::CHECK_CONFIG:
            return check(line);
        case relay::Action::RUN:
            return serve(line, environment);
    }
    return EXIT_USAGE;
}
