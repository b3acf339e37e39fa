// The program's entry, as Qt's platform entry calls it on Windows and main() elsewhere.
#pragma once

/// Runs the game; returns what the event loop returned.
int qMain(int argc, char** argv);
