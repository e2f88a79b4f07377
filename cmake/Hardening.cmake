# What makes a fault in memory harder to make use of, in every build that users get. Not with
# sanitizers, which find the faults themselves, and fewer of them beside this.
#
# Everything is tried first: what a system's compiler or linker doesn't know, it does otherwise or
# not at all. tests/package reads the result off the packed programs.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

# Without it only compiling is for a program that may lie anywhere; linking is as the compiler has
# it by default.
check_pie_supported(LANGUAGES CXX)

function(add_hardening)
    set(linking)
    foreach(keyword relro now noexecstack)
        check_linker_flag(CXX LINKER:-z,${keyword} LUMORA_LINKER_HAS_${keyword})
        if(LUMORA_LINKER_HAS_${keyword})
            list(APPEND linking LINKER:-z,${keyword})
        endif()
    endforeach()

    set(compiling)
    check_cxx_compiler_flag(-fstack-protector-strong LUMORA_HAS_STACK_PROTECTOR)
    if(LUMORA_HAS_STACK_PROTECTOR)
        list(APPEND compiling -fstack-protector-strong)
    endif()
    check_cxx_compiler_flag(-fcf-protection=full LUMORA_HAS_CONTROL_FLOW_PROTECTION)
    if(LUMORA_HAS_CONTROL_FLOW_PROTECTION)
        list(APPEND compiling -fcf-protection=full)
    endif()
    # The C library needs an optimising compiler for this, and warns of any other.
    set(fortifying -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
    list(JOIN fortifying " " CMAKE_REQUIRED_FLAGS)
    set(CMAKE_TRY_COMPILE_CONFIGURATION Release)
    check_cxx_source_compiles(
        "#include <cstdlib>
        static_assert(__USE_FORTIFY_LEVEL == 3);
        int main() {}"
        LUMORA_HAS_FORTIFICATION
    )
    if(LUMORA_HAS_FORTIFICATION)
        list(APPEND compiling ${fortifying})
    endif()

    set(is_for_users $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    target_compile_options(lumora_settings INTERFACE "$<${is_for_users}:${compiling}>")
    target_link_options(lumora_settings INTERFACE "$<${is_for_users}:${linking}>")
endfunction()

if(NOT LUMORA_SANITIZERS)
    add_hardening()
endif()
