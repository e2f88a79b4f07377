# add_lumora_test(<layer> <name> [PRECOMPILED] [LINKS <target>...] [ENVIRONMENT <NAME=value>...])
#
# Builds tests/<layer>/tst_<name>.cpp into a program of its own and runs it with CTest
# under the label <layer>, on the offscreen platform and in plain English. The target <layer>_tests
# builds all of a layer.
#
# PRECOMPILED   shares one set of precompiled headers with the folder's other programs that say so,
#               which all link the same. Making it takes as long as it saves in five of them
function(add_lumora_test layer name)
    cmake_parse_arguments(PARSE_ARGV 2 TEST "PRECOMPILED" "" "LINKS;ENVIRONMENT")
    set(target tst_${name})
    add_executable(${target} tst_${name}.cpp)
    # One run of moc for each program, without AUTOMOC's search for more.
    set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTORCC OFF UNITY_BUILD OFF)
    qt_generate_moc(tst_${name}.cpp "${CMAKE_CURRENT_BINARY_DIR}/tst_${name}.moc" TARGET ${target})
    target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/tst_${name}.moc")
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    # From then on Qt's QTRY macros narrow in the code of whoever uses them.
    if(Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
        set_source_files_properties(tst_${name}.cpp PROPERTIES COMPILE_OPTIONS -Wno-conversion)
    endif()
    target_link_libraries(
        ${target} PRIVATE lumora_settings lumora_test_support lumora_${layer} ${TEST_LINKS}
    )
    # Each runs once or twice: optimising them takes longer than it saves, and without it the C
    # library warns that it can't look after its callers.
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O0;-Wno-cpp>")
    if(TEST_PRECOMPILED)
        get_property(first DIRECTORY PROPERTY LUMORA_FIRST_TEST)
        if(first)
            target_precompile_headers(${target} REUSE_FROM ${first})
        else()
            target_precompile_headers(${target} PRIVATE <QtTest/QSignalSpy> <QtTest/QTest>)
            set_property(DIRECTORY PROPERTY LUMORA_FIRST_TEST ${target})
        endif()
    endif()
    if(NOT TARGET ${layer}_tests)
        add_custom_target(${layer}_tests)
    endif()
    add_dependencies(${layer}_tests ${target})
    add_test(NAME ${layer}.${name} COMMAND ${target})
    set_tests_properties(
        ${layer}.${name}
        PROPERTIES
            LABELS ${layer}
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=;${TEST_ENVIRONMENT}"
    )
endfunction()
