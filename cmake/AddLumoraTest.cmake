# add_lumora_test(<layer> <name> [LINKS <target>...] [ENVIRONMENT <NAME=value>...])
#
# Builds tests/<layer>/tst_<name>.cpp into a program of its own and runs it with CTest
# under the label <layer>, on the offscreen platform.
function(add_lumora_test layer name)
    cmake_parse_arguments(PARSE_ARGV 2 TEST "" "" "LINKS;ENVIRONMENT")
    set(target tst_${name})
    add_executable(${target} tst_${name}.cpp)
    target_link_libraries(
        ${target} PRIVATE lumora_settings lumora_test_support lumora_${layer} ${TEST_LINKS}
    )
    add_test(NAME ${layer}.${name} COMMAND ${target})
    set_tests_properties(
        ${layer}.${name}
        PROPERTIES LABELS ${layer} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${TEST_ENVIRONMENT}"
    )
endfunction()
