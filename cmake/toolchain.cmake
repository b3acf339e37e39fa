set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(CCACHE ccache)
if(CCACHE)
    # Paths relative to the tree, so that a second checkout finds what the first one has compiled.
    # Without the two kinds of sloppiness it stores nothing that uses a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    if(VORK2D_PCH AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    endif()
endif()
# mold 1.10 ends the segment that the loader makes read-only beside a page's end now and then, and the loader then
# refuses the program. It links the many tests, which do without that protection; what users run, the usual linker.
find_program(MOLD mold)
if(MOLD AND VORK2D_TESTS)
    add_link_options(-fuse-ld=mold -Wl,-z,norelro)
endif()

# Both clients of a rally compute the same serve from the same numbers, and the master's numbers go out on the
# wire. A fused multiply-add rounds once where the written code rounds twice, so that two builds would drift
# apart: no contraction, and never -ffast-math.
add_compile_options(-ffp-contract=off)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict) # GCC 12 sees overlaps in inlined std::string additions that cannot be
endif()
# A compiler or a Qt newer than those CI builds with has more to warn of, which must not keep anybody from building.
if(VORK2D_WERROR AND Qt6_VERSION VERSION_LESS 6.5
   AND ((CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        OR (CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)))
    add_compile_options(-Werror)
endif()

# Text from UTF-8 is converted in one place (ze/tools/convert.h), Qt's slots carry no keywords of their own.
add_compile_definitions(
    QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(VORK2D_SANITIZE)
    add_compile_options(-fsanitize=${VORK2D_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VORK2D_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The instrumented code hides from GCC what has been written and how long it is: it warns of the copy of an
        # empty structure, and of lengths that cannot be.
        add_compile_options(-Wno-maybe-uninitialized -Wno-stringop-overflow -Wno-array-bounds)
    endif()
    if(VORK2D_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
if(VORK2D_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()
