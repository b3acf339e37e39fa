#include "quiet_log.h"

#include <QApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Lives as long as the process; libFuzzer leaves it by _exit.
    static const QApplication app(*argc, *argv);
    fuzz::quiet_log();
    return 0;
}
