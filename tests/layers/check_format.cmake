# cmake -D CLANG_FORMAT=<program> -D ROOT=<source tree> -P check_format.cmake
#
# Fails if clang-format would change a file; says which.
set(files "")
foreach(folder IN ITEMS src tests bench fuzz packaging tools)
    file(GLOB_RECURSE found "${ROOT}/${folder}/*.h" "${ROOT}/${folder}/*.cpp")
    list(APPEND files ${found})
endforeach()
if(NOT files)
    message(FATAL_ERROR "${ROOT}: no sources found")
endif()
execute_process(
    COMMAND "${CLANG_FORMAT}" --dry-run -Werror ${files}
    RESULT_VARIABLE result
)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "clang-format would change the files above.")
endif()
