# One interface target that every target links: language level, warnings, sanitizers, include root.
option(CIRRILON_WERROR "Treat warnings as errors" OFF)
option(CIRRILON_FUZZ "Build the fuzz targets for libFuzzer (clang only)" OFF)
set(CIRRILON_SANITIZE "" CACHE STRING "Sanitizers, e.g. address;undefined or thread")

add_library(cirrilon_compile INTERFACE)
target_compile_features(cirrilon_compile INTERFACE cxx_std_20)
target_include_directories(cirrilon_compile INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(cirrilon_compile INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_DEPRECATED_WARNINGS)
target_compile_options(cirrilon_compile INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
    -Wcast-align -Wdouble-promotion -Wformat=2
    # GCC 12 warns falsely of overlapping copies in std::string operators.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${CIRRILON_WERROR}>:-Werror>)

if(CIRRILON_SANITIZE)
    list(JOIN CIRRILON_SANITIZE "," sanitizers)
    set(sanitize_flags -fsanitize=${sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
    target_compile_options(cirrilon_compile INTERFACE ${sanitize_flags})
    target_link_options(cirrilon_compile INTERFACE ${sanitize_flags})
endif()
if(CIRRILON_FUZZ)
    target_compile_options(cirrilon_compile INTERFACE -fsanitize=fuzzer-no-link)
endif()

find_program(CIRRILON_CCACHE ccache)
if(CIRRILON_CCACHE)
    # Paths count from the source folder, so that clones and build folders share results; the rest lets
    # files be cached that use a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CIRRILON_CCACHE})
endif()
