# add_lumora_tests(<layer> TESTS <name>... [LINKS <target>...] [ENVIRONMENT <NAME=value>...])
#
# Builds tests/<layer>/tst_<name>.cpp, each into a program tst_<name>, and runs them with CTest as
# <layer>.<name> under the label <layer>, on the offscreen platform and in plain English. The target
# <layer>_tests builds all of a layer.
#
# Where CMAKE_UNITY_BUILD is on, up to twelve of a call are one program with a link by the name of
# each: most of what compiling one takes is the headers that its neighbours include, too.
function(add_lumora_tests layer)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "TESTS;LINKS;ENVIRONMENT")
    if(NOT TARGET ${layer}_tests)
        add_custom_target(${layer}_tests)
    endif()
    set(per_program 1)
    if(CMAKE_UNITY_BUILD)
        # Evenly: two processors are to end with them at the same time.
        list(LENGTH ARG_TESTS count)
        math(EXPR programs "(${count} + 11) / 12")
        math(EXPR per_program "(${count} + ${programs} - 1) / ${programs}")
    endif()
    while(ARG_TESTS)
        list(SUBLIST ARG_TESTS 0 ${per_program} names)
        list(REMOVE_ITEM ARG_TESTS ${names})
        list(GET names 0 first)
        set(target tst_${first})
        if(per_program GREATER 1)
            set(target ${layer}_tests_from_${first})
            set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
            add_joint_program(${target} ${names})
        else()
            # The linker would follow a link that was there before.
            if(IS_SYMLINK "${CMAKE_CURRENT_BINARY_DIR}/${target}")
                file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/${target}")
            endif()
            set(source tst_${first}.cpp)
            add_executable(${target} ${source})
        endif()
        # One run of moc for each source, without AUTOMOC's search for more.
        set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTORCC OFF UNITY_BUILD OFF)
        foreach(name IN LISTS names)
            set(moc "${CMAKE_CURRENT_BINARY_DIR}/tst_${name}.moc")
            qt_generate_moc(tst_${name}.cpp "${moc}" TARGET ${target})
            target_sources(${target} PRIVATE "${moc}")
        endforeach()
        target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
        target_link_libraries(
            ${target} PRIVATE lumora_settings lumora_test_support lumora_${layer} ${ARG_LINKS}
        )
        # Each runs once or twice: optimising them takes longer than it saves, and without it the C
        # library warns that it can't look after its callers.
        target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-O0;-Wno-cpp>")
        # From then on Qt's QTRY macros narrow in the code of whoever uses them. A source's options
        # come after the settings that ask for the warning.
        if(Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
            set_source_files_properties("${source}" PROPERTIES COMPILE_OPTIONS -Wno-conversion)
        endif()
        foreach(name IN LISTS names)
            add_dependencies(${layer}_tests tst_${name})
            add_test(
                NAME ${layer}.${name}
                COMMAND "$<TARGET_FILE_DIR:${target}>/tst_${name}${CMAKE_EXECUTABLE_SUFFIX}"
            )
            set(environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 LANGUAGE= ${ARG_ENVIRONMENT})
            set_tests_properties(
                ${layer}.${name} PROPERTIES LABELS ${layer} ENVIRONMENT "${environment}"
            )
        endforeach()
    endwhile()
endfunction()

# The program that is each of these tests, which have links and targets by their names.
function(add_joint_program target)
    set(program "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    set(script "${PROJECT_SOURCE_DIR}/cmake/WriteTestProgram.cmake")
    set(sources)
    foreach(name IN LISTS ARGN)
        list(APPEND sources "${CMAKE_CURRENT_SOURCE_DIR}/tst_${name}.cpp")
    endforeach()
    add_custom_command(
        OUTPUT "${program}"
        COMMAND "${CMAKE_COMMAND}" -D "OUTPUT=${program}" -D "SOURCES=${sources}" -P "${script}"
        DEPENDS ${sources} "${script}"
        VERBATIM
    )
    add_executable(${target} "${program}")
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    foreach(name IN LISTS ARGN)
        add_custom_target(tst_${name})
        add_dependencies(tst_${name} ${target})
        file(
            CREATE_LINK ${target}${CMAKE_EXECUTABLE_SUFFIX}
            "${CMAKE_CURRENT_BINARY_DIR}/tst_${name}${CMAKE_EXECUTABLE_SUFFIX}" SYMBOLIC
        )
    endforeach()
endfunction()
