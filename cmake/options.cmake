# Values a packager sets; the defaults work out of the box.
set(VORK2D_SERVER_HOST "play.vork2d.example" CACHE STRING "Host of the default relay, wss on its default port")
set(VORK2D_DEV_HOST "127.0.0.1" CACHE STRING "Short alias of the development relay, port 8888")
set(VORK2D_ORGANISATION "vork2d.example" CACHE STRING "Organisation under which the settings are stored")

# What is built; the presets choose.
option(VORK2D_TESTS "Build the tests" OFF)
option(VORK2D_BENCH "Build the benchmarks" OFF)
option(VORK2D_FUZZ "Build the fuzz targets (clang)" OFF)
option(VORK2D_PCH "Precompile Qt's and the standard library's headers" OFF)
option(VORK2D_WERROR "Treat warnings as errors where the compiler and Qt are the oldest that we support" OFF)
set(VORK2D_SANITIZE "" CACHE STRING "Value of -fsanitize=, empty for none")
option(VORK2D_COVERAGE "Instrument for coverage" OFF)
