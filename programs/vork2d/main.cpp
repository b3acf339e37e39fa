// The entry on platforms whose Qt has no entry of its own. It answers what needs no window, then
// runs the game.

#include "v5/main_vork2d.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* USAGE =
    "usage: vork2d [--user GROUP:NAME] [--pass PASSWORD] [--host HOST] [--server HOST[:PORT]] "
    "[--login]\n"
    "\n"
    "A ball, two paddles, two players at their own machines, or one who plays both.\n"
    "\n"
    "  --user GROUP:NAME      who you are; two players of one group play together\n"
    "  --pass PASSWORD        the group's password, three characters or more\n"
    "  --host HOST            localhost for a relay on this machine; any other name takes the\n"
    "                         default server, with a warning where it is not that server's\n"
    "  --server HOST[:PORT]   takes the place of the default server for this run; anything else\n"
    "                         is an error, and no default server is left to connect to\n"
    "  --login                connect at once, without the dialog\n"
    "  --__log_level LEVEL    error, warn, info, debug or trace\n"
    "  --__bounds X,Y,W,H     place of the window on the screen\n"
    "  --help, --version      these, on standard output\n"
    "\n"
    "Keys: Space starts and stops; Up and Down move your paddle; Ctrl+1 to Ctrl+0 set the speed; "
    "F11 fills the screen.\n";

bool has_argument(int argc, char** argv, const char* wanted) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], wanted) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (has_argument(argc, argv, "--help")) {
        std::fputs(USAGE, stdout);
        return 0;
    }
    if (has_argument(argc, argv, "--version")) {
        std::puts("vork2d " VORK2D_VERSION);
        return 0;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // who pipes the log reads each line as it comes
    return qMain(argc, argv);
}
