#include "CertificateKeeper.h"

#include "HostCertificate.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using std::chrono::hours;

struct CertificateKeeperTest : ::testing::Test {
    CertificateKeeperTest() {
        fs::create_directory(folder);
        std::ofstream(files.key) << host::pem_of(key);
    }
    ~CertificateKeeperTest() override { fs::remove_all(folder); }

    void write(const host::Dates& dates) const {
        std::ofstream(files.cert) << host::pem_of(host::make_cert(key, dates));
    }

    /// Lets timers run until the log has so many lines, which it has to have in time.
    void run_until(std::size_t count) {
        while (words.size() < count && context.run_one_for(std::chrono::seconds(20)) > 0) {
        }
        ASSERT_EQ(words.size(), count);
    }

    const fs::path folder =
        fs::temp_directory_path() / ("relay_certificate_keeper." + std::to_string(getpid()));
    const relay::CertificateFiles files{folder / "c.pem", folder / "k.pem", false};
    const host::Key key = host::make_key("P-256");
    std::vector<std::string> lines;
    std::vector<std::string> words;  ///< the first of each line behind its stamp
    relay::Log log{[this](std::string_view line) {
        lines.emplace_back(line.substr(25));
        words.push_back(lines.back().substr(0, lines.back().find(' ')));
    }};
    boost::asio::io_context context;
    relay::CertificateKeeper keeper{context, files, log, std::chrono::milliseconds(1)};
};

TEST_F(CertificateKeeperTest, a_start_with_a_good_certificate_says_nothing) {
    write({});
    EXPECT_EQ(keeper.start(), "");
    EXPECT_EQ(words.size(), 0U);
}

TEST_F(CertificateKeeperTest, one_that_ends_soon_is_warned_of_at_the_start_and_at_each_look) {
    write({-hours(24), hours(24)});
    EXPECT_EQ(keeper.start(), "");
    run_until(3);
    EXPECT_EQ(words, std::vector<std::string>(3, "certificate_warning"));
    EXPECT_EQ(
        lines[0].rfind("certificate_warning cert=\"" + files.cert + "\" detail=\"it ends on 20", 0),
        0U)
        << lines[0];
}

TEST_F(CertificateKeeperTest, one_whose_dates_are_wrong_is_warned_of_at_the_start) {
    write({-hours(48), -hours(24)});
    EXPECT_EQ(keeper.start(), "");
    EXPECT_NE(keeper.get(), nullptr);
    EXPECT_NE(lines.at(0).find("detail=\"it ended on 20"), std::string::npos);
}

TEST_F(CertificateKeeperTest, a_reload_takes_up_no_certificate_whose_dates_are_wrong) {
    write({});
    ASSERT_EQ(keeper.start(), "");
    const SSL_CTX* const former = keeper.get();
    write({-hours(48), -hours(24)});
    keeper.reload();
    write({hours(24), hours(48)});
    keeper.reload();
    EXPECT_EQ(words, std::vector<std::string>(2, "reload_failed"));
    EXPECT_EQ(keeper.get(), former);
    write({-hours(24), hours(24)});
    keeper.reload();
    EXPECT_EQ(words[2], "reloaded");
    EXPECT_EQ(words[3], "certificate_warning");
    EXPECT_NE(keeper.get(), former);
}

TEST_F(CertificateKeeperTest, the_relays_own_is_made_anew_while_it_runs) {
    const relay::CertificateFiles own{files.cert, files.key, true};
    relay::CertificateKeeper runs{context, own, log, std::chrono::milliseconds(1)};
    ASSERT_EQ(relay::make_self_signed(own), "");
    ASSERT_EQ(runs.start(), "");
    EXPECT_EQ(words.size(), 0U);
    // What a start a month before its end leaves where no other could be made.
    ASSERT_EQ(relay::make_self_signed(own, hours(24 * 20)), "");
    fs::create_directory(own.key + ".new");
    runs.reload();
    fs::remove(own.key + ".new");
    run_until(2);
    EXPECT_EQ(words, std::vector<std::string>(2, "reloaded"));
}

}  // namespace
