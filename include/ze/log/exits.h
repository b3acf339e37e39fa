// The ways out when the program cannot go on: a text on the standard output, five seconds in which
// it can be read, exit code 1.
#pragma once

class QString;

namespace ze {

[[noreturn]] void exit_fatal(const QString& text);

/// For a pointer that must not be null. `file` is the path of the source without extension, `text`
/// the expression that failed, such as "parent == NULL".
[[noreturn]] void nullPointerHandling(const char* file, int line, const QString& text);

/// For any other expression that must hold.
[[noreturn]] void boolExpressionHandling(const char* file, int line);

}  // namespace ze
