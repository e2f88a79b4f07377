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
        target_sources(${target} PRIVATE "${picture}")
        set_source_files_properties("${picture}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
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
