# add_layer(NAME <layer> SOURCES <file>... [DEPENDS <layer>...] [USES <layer>...]
#           [LIBRARIES <target>...] [PRIVATE_LIBRARIES <target>...] [FLOORS <folder>...])
#
# Declares the static library of one folder of src/.
#
# DEPENDS  layers whose types appear in this layer's headers
# USES     layers that only this layer's sources see: whoever links this layer
#          can't include their headers. With a floor behind it (ui/widgets) only the floors of
#          that layer up to this one, which are a library of their own
# LIBRARIES / PRIVATE_LIBRARIES   the same distinction for libraries from outside
# FLOORS   the layer's own folders from the ground up: each includes only itself and
#          those before it
#
# Every declaration adds a line to the layer table, which the test `layers`
# holds against the #include lines: a header that needs no linking would
# otherwise slip past the linker.
function(add_layer)
    cmake_parse_arguments(
        PARSE_ARGV 0 LAYER "" "NAME" "SOURCES;DEPENDS;USES;LIBRARIES;PRIVATE_LIBRARIES;FLOORS"
    )
    if(LAYER_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "add_layer: unknown arguments ${LAYER_UNPARSED_ARGUMENTS}")
    endif()

    set(target lumora_${LAYER_NAME})
    add_library(${target} STATIC ${LAYER_SOURCES})
    target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC ${LAYER_LIBRARIES} PRIVATE ${LAYER_PRIVATE_LIBRARIES})
    target_link_libraries(${target} PRIVATE lumora_settings)
    foreach(layer IN LISTS LAYER_DEPENDS)
        target_link_libraries(${target} PUBLIC lumora_${layer})
    endforeach()
    foreach(layer IN LISTS LAYER_USES)
        string(REPLACE "/" "_" library "lumora_${layer}")
        target_link_libraries(${target} PRIVATE ${library})
    endforeach()

    set_property(
        GLOBAL APPEND_STRING
        PROPERTY LUMORA_LAYER_TABLE
            "${LAYER_NAME}: ${LAYER_DEPENDS};${LAYER_USES} | ${LAYER_FLOORS}\n"
    )
endfunction()
