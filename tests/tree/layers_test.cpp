// An include points down or sideways within its own layer. This reads every #include line of the
// tree.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

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
            {"ze_net", {"include/ze/net", "src/ze/net"}, {"ze_core"}},
            {"relay", {"programs/relay"}, {}},
            {"rally", {"programs/vork2d/rally"}, {}},
        };
        rows.push_back({"early", {"programs/vork2d/early"}, {"ze_core", "ze_qt"}});
        for (const char* generation : {"v1", "v2", "v3", "v4"}) {
            rows.push_back({generation,
                            {std::string("programs/vork2d/") + generation},
                            {"ze_core", "ze_qt", "ze_net", "early"}});
        }
        rows.push_back({"v5", {"programs/vork2d/v5"}, {"rally", "ze_core", "ze_qt", "ze_net"}});
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

/// A tree of a few files, removed with this object.
class SmallTree {
public:
    const fs::path root = fs::temp_directory_path() / ("layers_test." + std::to_string(::getpid()));

    SmallTree() { fs::create_directories(root); }
    SmallTree(const SmallTree&) = delete;
    SmallTree& operator=(const SmallTree&) = delete;
    ~SmallTree() { fs::remove_all(root); }

    void write(const std::string& path, const std::string& text) const {
        fs::create_directories((root / path).parent_path());
        std::ofstream(root / path) << text;
    }
};

const Layer& layer_named(const std::string& name) {
    return *std::find_if(layers().begin(), layers().end(),
                         [&name](const Layer& layer) { return layer.name == name; });
}

TEST(Layers, an_include_that_points_up_is_seen) {
    const SmallTree tree;
    tree.write("include/ze/qt/GPanel.h", "#pragma once\n");
    tree.write("include/ze/math/Rect.h", "#include \"ze/qt/GPanel.h\"\n");
    EXPECT_EQ(wrong_includes(tree.root, layer_named("ze_core")),
              std::vector<std::string>{"include/ze/math/Rect.h includes ze/qt/GPanel.h"});
}

TEST(Layers, an_include_of_another_generation_is_seen_in_each_way_to_write_it) {
    for (const std::string included : {"vork2d/v4/Ball.h", "../v4/Ball.h"}) {
        const SmallTree tree;
        tree.write("programs/vork2d/v4/Ball.h", "#pragma once\n");
        tree.write("programs/vork2d/v1/Paddle.h", "#include \"" + included + "\"\n");
        EXPECT_EQ(wrong_includes(tree.root, layer_named("v1")),
                  std::vector<std::string>{"programs/vork2d/v1/Paddle.h includes " + included});
    }
}

TEST(Layers, what_the_early_generations_share_is_not_for_the_live_one) {
    const SmallTree tree;
    tree.write("programs/vork2d/early/measures.h", "#pragma once\n");
    tree.write("programs/vork2d/v4/Ball.h", "#include \"vork2d/early/measures.h\"\n");
    tree.write("programs/vork2d/v5/Ball.h", "#include \"vork2d/early/measures.h\"\n");
    EXPECT_EQ(wrong_includes(tree.root, layer_named("v4")), std::vector<std::string>());
    EXPECT_EQ(
        wrong_includes(tree.root, layer_named("v5")),
        std::vector<std::string>{"programs/vork2d/v5/Ball.h includes vork2d/early/measures.h"});
}

}  // namespace
