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

std::optional<std::string> environment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

int fail(const std::string& fault) {
    std::fprintf(stderr, "vork2d-relay: %s\n", fault.c_str());
    return EXIT_USAGE;
}

/// What would end the relay at its start, as far as can be told without starting it.
std::string start_fault(const relay::Options& options) {
    std::string fault;
    static_cast<void>(relay::resolve(options.listen, fault));
    if (fault.empty() && !options.status.empty()) {
        static_cast<void>(relay::resolve_loopback(options.status, fault));
    }
    if (!fault.empty()) {
        return fault;
    }
    return relay::TlsContext::check(options.certificate_files());
}

int check(const relay::Options& options) {
    if (const std::string fault = start_fault(options); !fault.empty()) {
        return fail(fault);
    }
    std::puts(options.cert.empty() ? "The settings are good."
                                   : "The settings are good, and so is the certificate.");
    return EXIT_SUCCESS;
}

int serve(const relay::Options& options) {
    // A log that can not be written, for want of a reader or of room, ends nothing.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    relay::raise_descriptor_limit();
    relay::LogWriter writer(STDOUT_FILENO);
    const relay::Log log([&writer](std::string_view line) { writer.write(line); });
    const relay::ServiceManager manager(environment);
    relay::Server server(options, log, manager);
    if (const std::string fault = server.start(); !fault.empty()) {
        return fail(fault);
    }
    writer.write(server.reach());
    server.run();
    return EXIT_SUCCESS;
}

}  // namespace

int main(int count, char** values) {
    relay::hold_standard_descriptors();
    const relay::CommandLine line =
        relay::read_command_line({values + 1, values + count}, environment);
    if (!line.fault.empty()) {
        return fail(line.fault + " (see --help)");
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
            return check(line.options);
        case relay::Action::RUN:
            return serve(line.options);
    }
    return EXIT_USAGE;
}
