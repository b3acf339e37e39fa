// The command line as attributes: `-key value` pairs hold a QString, keys with no value are flags.
// There is no `-key=value` form, and numbers are not recognised. GApp::argv is the program's
// instance.
#pragma once

#include "ze/store/GAttributes.h"

#include <QString>

#include <vector>

namespace ze::store {

class GArgv : public GAttributes {
public:
    /// Builds the source from a program's arguments in UTF-8, the program's name left out. An
    /// argument with a blank or a tab is put in double quotes; a quote inside an argument gets a
    /// backslash before it, which parse() does not take away again.
    void set_arguments(int argc, char** argv);

    /// Adds the pairs and flags of the source to the attributes; never clears them. False at the
    /// first error or missing must-have key, with a log line; what was read until then stays. A
    /// source with an unterminated quote gives no pairs and is no error in itself.
    bool parse();

    /// Keys without which parse() is false.
    void set_must_have_keys(const std::vector<QString>& keys) { must_have_keys_ = keys; }

    /// Kept for callers; parse() accepts every key.
    void set_optional_keys(const std::vector<QString>& keys) { optional_keys_ = keys; }

    [[nodiscard]] const std::vector<QString>& optional_keys() const noexcept {
        return optional_keys_;
    }
    [[nodiscard]] QString source() const { return source_; }

    /// Logs the count and one line for each pair.
    void show(unsigned indent) const;

private:
    bool read_pairs();
    [[nodiscard]] bool has_must_have_keys() const;

    QString source_;
    std::vector<QString> must_have_keys_;
    std::vector<QString> optional_keys_;
};

}  // namespace ze::store
