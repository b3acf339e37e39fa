#include "Certificate.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

struct Certificate : ::testing::Test {
    Certificate() { fs::remove_all(folder); }
    ~Certificate() override { fs::remove_all(folder); }

    static std::string read(const std::string& path) {
        std::stringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    const fs::path folder =
        fs::temp_directory_path() / ("relay_certificate." + std::to_string(getpid()));
    const relay::CertificateFiles own{folder / "state/certificate.pem", folder / "state/key.pem",
                                      true};
};

TEST_F(Certificate, the_first_load_makes_a_key_that_only_its_owner_reads) {
    relay::TlsContext tls;
    EXPECT_EQ(tls.load(own), "");
    EXPECT_NE(tls.get(), nullptr);
    EXPECT_EQ(fs::status(own.key).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder / "state").permissions(), fs::perms::owner_all);
}

TEST_F(Certificate, the_second_load_keeps_what_is_there) {
    relay::TlsContext tls;
    ASSERT_EQ(tls.load(own), "");
    const std::string key = read(own.key);
    const std::string cert = read(own.cert);
    ASSERT_EQ(tls.load(own), "");
    EXPECT_EQ(read(own.key), key);
    EXPECT_EQ(read(own.cert), cert);
}

TEST_F(Certificate, one_that_runs_out_within_a_month_is_made_anew) {
    relay::TlsContext tls;
    for (const int days : {-1, 29}) {
        ASSERT_EQ(relay::make_self_signed(own, std::chrono::hours(24 * days)), "");
        const std::string cert = read(own.cert);
        ASSERT_EQ(tls.load(own), "");
        EXPECT_NE(read(own.cert), cert) << days;
    }
}

TEST_F(Certificate, one_that_is_good_for_more_than_a_month_stays) {
    ASSERT_EQ(relay::make_self_signed(own, std::chrono::hours(24 * 31)), "");
    const std::string cert = read(own.cert);
    relay::TlsContext tls;
    ASSERT_EQ(tls.load(own), "");
    EXPECT_EQ(read(own.cert), cert);
}

TEST_F(Certificate, one_that_is_broken_is_made_anew) {
    relay::TlsContext tls;
    ASSERT_EQ(tls.load(own), "");
    std::ofstream(own.cert) << "no certificate";
    EXPECT_EQ(tls.load(own), "");
}

TEST_F(Certificate, a_hosts_own_that_is_missing_is_told_and_the_former_stays) {
    relay::TlsContext tls;
    ASSERT_EQ(tls.load(own), "");
    SSL_CTX* const former = tls.get();
    const std::string fault = tls.load({folder / "no.pem", own.key, false});
    EXPECT_EQ(fault.rfind("can not use the certificate " + (folder / "no.pem").string(), 0), 0U);
    EXPECT_EQ(tls.get(), former);
}

TEST_F(Certificate, a_key_of_another_certificate_is_told) {
    const relay::CertificateFiles other{folder / "other.pem", folder / "other.key", true};
    ASSERT_EQ(relay::make_self_signed(own), "");
    ASSERT_EQ(relay::make_self_signed(other), "");
    relay::TlsContext tls;
    const std::string fault = tls.load({own.cert, other.key, false});
    EXPECT_EQ(fault.rfind("can not use the key " + other.key, 0), 0U);
}

TEST_F(Certificate, a_check_makes_nothing) {
    EXPECT_EQ(relay::TlsContext::check(own), "");
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(Certificate, a_check_finds_a_folder_that_can_not_be_made) {
    fs::create_directory(folder);
    std::ofstream(folder / "state") << "no folder";
    EXPECT_EQ(relay::TlsContext::check(own), "can not write into " + (folder / "state").string());
}

TEST_F(Certificate, a_folder_that_can_not_be_written_is_told) {
    const std::string fault = relay::make_self_signed({"/proc/x/c.pem", "/proc/x/k.pem", true});
    EXPECT_EQ(fault.rfind("can not write /proc/x/k.pem: ", 0), 0U);
}

}  // namespace
