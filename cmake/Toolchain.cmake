# Everything that all targets share: the language, the warnings, the sanitizers, the compiler cache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without these allowances it keeps nothing that was compiled with precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${CCACHE_PROGRAM}"
    )
endif()

add_library(lumora_settings INTERFACE)

# A hundred test programs are linked: the usual linker takes five times as long.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=mold LUMORA_HAS_MOLD)
if(BUILD_TESTING AND LUMORA_HAS_MOLD)
    target_link_options(lumora_settings INTERFACE -fuse-ld=mold)
endif()

# For the sources that include QCoro's headers of awaitable things: those connect without a
# context themselves, which QT_NO_CONTEXTLESS_CONNECT takes away (since Qt 6.7).
set(LUMORA_QCORO_OPTIONS -UQT_NO_CONTEXTLESS_CONNECT)

target_compile_definitions(
    lumora_settings
    INTERFACE
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_CONTEXTLESS_CONNECT
        QT_NO_FOREACH
        QT_NO_KEYWORDS
        QT_NO_URL_CAST_FROM_STRING
        QT_DISABLE_DEPRECATED_BEFORE=0x060400
)

target_compile_options(
    lumora_settings
    INTERFACE
        -Wall
        -Wextra
        -Wpedantic
        -Wcast-align
        -Wconversion
        -Wdouble-promotion
        -Wformat=2
        -Wnon-virtual-dtor
        -Woverloaded-virtual
        -Wshadow
        -Wsign-conversion
        -Wunused
        $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
        $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
        # Takes what a function finds by a temporary name for a reference into that name.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-dangling-reference>
        $<$<BOOL:${LUMORA_WARNINGS_AS_ERRORS}>:-Werror>
        # Coroutines are a switch of their own in both compilers.
        $<$<CXX_COMPILER_ID:GNU>:-fcoroutines>
)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
    # The compiler cache has to see which precompiled headers are used.
    target_compile_options(lumora_settings INTERFACE -fpch-preprocess)
endif()

if(LUMORA_SANITIZERS)
    target_compile_options(
        lumora_settings
        INTERFACE
            -fsanitize=${LUMORA_SANITIZERS}
            -fno-omit-frame-pointer
            -fno-sanitize-recover=all
            # What this one puts in front of functions, clang 14 can't put in front of coroutines.
            $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>
    )
    target_link_options(lumora_settings INTERFACE -fsanitize=${LUMORA_SANITIZERS})
endif()
