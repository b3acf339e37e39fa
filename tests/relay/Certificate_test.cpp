#include "Certificate.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::string read(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Certificate, a_folder_that_can_not_be_written_is_told) {
    const std::string fault = relay::make_self_signed({"/proc/x/c.pem", "/proc/x/k.pem", true});
    EXPECT_EQ(fault.rfind("can not write /proc/x/k.pem: ", 0), 0U);
}

TEST(Certificate, a_full_disk_leaves_nothing_new_and_what_was_there) {
    const fs::path folder =
        fs::temp_directory_path() / ("relay_certificate." + std::to_string(getpid()));
    const relay::CertificateFiles files{folder / "certificate.pem", folder / "key.pem", true};
    ASSERT_EQ(relay::make_self_signed(files), "");
    const std::string cert = read(files.cert);
    const std::string key = read(files.key);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    for (const rlim_t room : {rlim_t{0}, rlim_t{100}, key.size()}) {  // nothing, some, the key
        const rlimit limit{room, former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        const std::string fault = relay::make_self_signed(files);
        setrlimit(RLIMIT_FSIZE, &former);
        EXPECT_EQ(fault.rfind("can not write " + folder.string(), 0), 0U) << room;
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2) << room;
        EXPECT_EQ(read(files.cert), cert) << room;
        EXPECT_EQ(read(files.key), key) << room;
    }
    std::signal(SIGXFSZ, SIG_DFL);
    fs::remove_all(folder);
}

}  // namespace
