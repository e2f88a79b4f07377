# What the bundle asks for on macOS: as much as the libraries that come along. Homebrew makes its
# own for the very system it installs them on.
set(LUMORA_MINIMUM_MACOS "${CMAKE_OSX_DEPLOYMENT_TARGET}")
if(APPLE AND NOT LUMORA_MINIMUM_MACOS)
    execute_process(
        COMMAND sw_vers -productVersion
        OUTPUT_VARIABLE LUMORA_MINIMUM_MACOS
        COMMAND_ERROR_IS_FATAL ANY
    )
    string(REGEX MATCH "^[0-9]+" LUMORA_MINIMUM_MACOS "${LUMORA_MINIMUM_MACOS}")
endif()

# draw_icon(<icns>)
#
# Draws macOS's icon in all the sizes that one has.
function(draw_icon icns)
    if(NOT TARGET lumora_icon_renderer)
        add_executable(lumora_icon_renderer "${PROJECT_SOURCE_DIR}/packaging/render_icon.cpp")
        target_link_libraries(lumora_icon_renderer PRIVATE lumora_settings Qt6::Gui Qt6::Svg)
    endif()
    set(drawing "${PROJECT_SOURCE_DIR}/assets/Lumora.svg")
    set(pictures "${CMAKE_CURRENT_BINARY_DIR}/Lumora.iconset")
    set(drawn)
    foreach(side 16 32 128 256 512)
        math(EXPR pixels "2 * ${side}")
        set(picture "${pictures}/icon_${side}x${side}")
        list(APPEND drawn COMMAND lumora_icon_renderer "${drawing}" ${side} "${picture}.png")
        list(APPEND drawn COMMAND lumora_icon_renderer "${drawing}" ${pixels} "${picture}@2x.png")
    endforeach()
    add_custom_command(
        OUTPUT "${icns}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${pictures}"
        ${drawn}
        COMMAND iconutil --convert icns --output "${icns}" "${pictures}"
        DEPENDS "${drawing}" lumora_icon_renderer
        VERBATIM
    )
endfunction()

# lay_out_bundle(<target> <folder>)
#
# Makes the executable the one of the bundle <folder>/Lumora.app. The self-updater swaps
# bundles, hence there is one on every system: Linux's has macOS's layout, with its
# executable in Contents/bin.
function(lay_out_bundle target folder)
    set(plist "${CMAKE_CURRENT_BINARY_DIR}/${target}.plist")
    set(picture "${PROJECT_SOURCE_DIR}/assets/Lumora.png")
    configure_file("${PROJECT_SOURCE_DIR}/packaging/Info.plist.in" "${plist}" @ONLY)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME Lumora)

    if(APPLE)
        set(icon "${CMAKE_CURRENT_BINARY_DIR}/Lumora.icns")
        draw_icon("${icon}")
        target_sources(${target} PRIVATE "${picture}" "${icon}")
        set_source_files_properties(
            "${picture}" "${icon}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources
        )
        set_target_properties(
            ${target}
            PROPERTIES
                MACOSX_BUNDLE TRUE
                MACOSX_BUNDLE_INFO_PLIST "${plist}"
                RUNTIME_OUTPUT_DIRECTORY "${folder}"
        )
        return()
    endif()

    set(contents "${folder}/Lumora.app/Contents")
    configure_file("${plist}" "${contents}/Info.plist" COPYONLY)
    configure_file("${picture}" "${contents}/Resources/Lumora.png" COPYONLY)
    put_into_bundle(${target} "${folder}")
endfunction()

# put_into_bundle(<target> <folder>)
#
# Puts the executable where the bundle <folder>/Lumora.app has its own.
function(put_into_bundle target folder)
    if(APPLE)
        set_target_properties(
            ${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${folder}/Lumora.app/Contents/MacOS"
        )
        return()
    endif()
    set_target_properties(
        ${target}
        PROPERTIES
            RUNTIME_OUTPUT_DIRECTORY "${folder}/Lumora.app/Contents/bin"
            # Where a packaged bundle has the libraries that came with it.
            BUILD_WITH_INSTALL_RPATH TRUE
            INSTALL_RPATH "$ORIGIN/../lib"
    )
    # The newer kind of run path doesn't hold for the libraries' own libraries.
    target_link_options(${target} PRIVATE LINKER:--disable-new-dtags)
endfunction()
