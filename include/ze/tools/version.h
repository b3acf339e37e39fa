// The version of the framework; the program has one of its own (GApp::set_app_version).
#pragma once

namespace ze {

/// "major.minor.patch" of the framework, as the build was configured.
[[nodiscard]] const char* framework_version() noexcept;

}  // namespace ze
