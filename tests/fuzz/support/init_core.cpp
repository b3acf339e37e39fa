#include "quiet_log.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::quiet_log();
    return 0;
}
