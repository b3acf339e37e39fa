// An include points down or sideways within its own layer. This reads every #include line of the
// tree.

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// The folders of one layer, and the layers whose headers they may include beside their own.
struct Layer {
    std::string name;
    std::vector<std::string> folders;
    std::set<std::string> below;
};

const std::vector<Layer>& layers() {
    static const std::vector<Layer> all = [] {
        std::vector<Layer> rows = {
            {"ze_core",
             {"include/ze/log", "include/ze/math", "include/ze/store", "include/ze/tools",
              "src/ze/log", "src/ze/math", "src/ze/store", "src/ze/tools"},
             {}},
            {"ze_qt", {"include/ze/qt", "src/ze/qt"}, {"ze_core"}},
            {"ze_net", {"include/ze/net", "src/ze/net"}, {"ze_core", "ze_qt"}},
            {"relay", {"programs/relay"}, {}},
        };
        for (const char* generation : {"v1", "v2", "v3", "v4", "v5"}) {
            rows.push_back({generation,
                            {std::string("programs/vork2d/") + generation},
                            {"ze_core", "ze_qt", "ze_net"}});
        }
        return rows;
    }();
    return all;
}

std::string layer_of(const std::string& path) {
    for (const Layer& layer : layers()) {
        for (const std::string& folder : layer.folders) {
            if (path.starts_with(folder + "/")) {
                return layer.name;
            }
        }
    }
    return "";
}

/// The file that a quoted include means, relative to the root; empty when it is none of ours.
std::string resolve(const fs::path& root, const fs::path& file, const std::string& included) {
    for (const fs::path& base : {root / "include", root / "programs", root, file.parent_path()}) {
        const fs::path candidate = (base / included).lexically_normal();
        if (fs::exists(candidate)) {
            return fs::relative(candidate, root).generic_string();
        }
    }
    return "";
}

std::vector<std::string> quoted_includes(const fs::path& file) {
    static const std::regex pattern(R"(^\s*#\s*include\s*["<]([^">]+)[">])");
    std::vector<std::string> found;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        std::smatch match;
        if (std::regex_search(line, match, pattern)) {
            found.push_back(match[1]);
        }
    }
    return found;
}

std::vector<std::string> wrong_includes(const fs::path& root, const Layer& layer) {
    std::vector<std::string> wrong;
    for (const std::string& folder : layer.folders) {
        if (!fs::exists(root / folder)) {
            continue;
        }
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") {
                continue;
            }
            for (const std::string& included : quoted_includes(entry.path())) {
                const std::string target = layer_of(resolve(root, entry.path(), included));
                if (!target.empty() && target != layer.name && !layer.below.contains(target)) {
                    wrong.push_back(fs::relative(entry.path(), root).generic_string() +
                                    " includes " + included);
                }
            }
        }
    }
    return wrong;
}

TEST(Layers, no_include_points_up_or_into_another_generation) {
    for (const Layer& layer : layers()) {
        EXPECT_EQ(wrong_includes(SOURCE_DIR, layer), std::vector<std::string>()) << layer.name;
    }
}

TEST(Layers, an_include_that_points_up_is_seen) {
    const fs::path root =
        fs::temp_directory_path() /
        ("layers_test." + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    fs::create_directories(root / "include/ze/math");
    fs::create_directories(root / "include/ze/qt");
    std::ofstream(root / "include/ze/qt/GPanel.h") << "#pragma once\n";
    std::ofstream(root / "include/ze/math/Rect.h") << "#include \"ze/qt/GPanel.h\"\n";
    EXPECT_EQ(wrong_includes(root, layers()[0]),
              std::vector<std::string>{"include/ze/math/Rect.h includes ze/qt/GPanel.h"});
    fs::remove_all(root);
}

}  // namespace
