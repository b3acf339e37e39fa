#include <string>
#include <vector>

// libFuzzer's entropic schedule looks up each thing that an input covers in a list of rare ones:
// with all that the network libraries have to cover it takes four fifths of the time.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static std::string schedule = "-entropic=0";
    static std::vector<char*> arguments(*argv, *argv + *argc);
    arguments.insert(arguments.begin() + 1, schedule.data());
    *argc = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    *argv = arguments.data();
    return 0;
}
