# `cmake --install` as packagers expect it, on systems whose programs, icons and manual pages lie in
# folders of their own (GNUInstallDirs). On macOS the bundle is all there is.

# Named as the program is, and not as the project, unless somebody wants it otherwise.
if(CMAKE_INSTALL_DOCDIR STREQUAL "${CMAKE_INSTALL_DATAROOTDIR}/doc/${PROJECT_NAME}")
    set(CMAKE_INSTALL_DOCDIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/lumora")
endif()

# From a program to those that nobody calls by hand.
file(
    RELATIVE_PATH LUMORA_HELPER_FOLDER "${CMAKE_INSTALL_FULL_BINDIR}"
    "${CMAKE_INSTALL_FULL_LIBEXECDIR}"
)

# install_program(<target> <folder> <name>)
#
# Installs a program of the bundle without the run path, which is the bundle's.
function(install_program target folder name)
    install(PROGRAMS "$<TARGET_FILE:${target}>" DESTINATION "${folder}" RENAME ${name})
    install(
        CODE "
        cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_PREFIX OUTPUT_VARIABLE prefix)
        set(program \"${folder}/${name}\")
        cmake_path(ABSOLUTE_PATH program BASE_DIRECTORY \"\${prefix}\")
        set(program \"\$ENV{DESTDIR}\${program}\")
        file(RPATH_REMOVE FILE \"\${program}\")
        if(CMAKE_INSTALL_DO_STRIP)
            execute_process(
                COMMAND \"${CMAKE_STRIP}\" \"\${program}\" COMMAND_ERROR_IS_FATAL ANY
            )
        endif()
        "
    )
endfunction()

# install_icons()
#
# The icon as it is drawn, and in the sizes that desktops look for.
function(install_icons)
    set(drawing "${PROJECT_SOURCE_DIR}/assets/Lumora.svg")
    set(theme "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
    install(FILES "${drawing}" DESTINATION "${theme}/scalable/apps" RENAME lumora.svg)

    add_executable(lumora_icon_renderer "${PROJECT_SOURCE_DIR}/packaging/render_icon.cpp")
    target_link_libraries(lumora_icon_renderer PRIVATE lumora_settings Qt6::Gui Qt6::Svg)
    set(pictures)
    foreach(side 16 22 24 32 48 64 128 256 512)
        set(picture "${CMAKE_BINARY_DIR}/icons/${side}.png")
        add_custom_command(
            OUTPUT "${picture}"
            COMMAND lumora_icon_renderer "${drawing}" ${side} "${picture}"
            DEPENDS "${drawing}"
            VERBATIM
        )
        list(APPEND pictures "${picture}")
        install(
            FILES "${picture}" DESTINATION "${theme}/${side}x${side}/apps" RENAME lumora.png
        )
    endforeach()
    add_custom_target(lumora_icons ALL DEPENDS ${pictures})
endfunction()

function(install_tree)
    install_program(Lumora "${CMAKE_INSTALL_BINDIR}" lumora)
    install_program(lumora_askpass_program "${CMAKE_INSTALL_LIBEXECDIR}" lumora-askpass)
    install_program(lumora_fetch_program "${CMAKE_INSTALL_LIBEXECDIR}" lumora-fetch)
    install_icons()

    set(sources "${PROJECT_SOURCE_DIR}/packaging/desktop")
    set(metainfo "${CMAKE_BINARY_DIR}/app.lumora.Lumora.metainfo.xml")
    configure_file("${sources}/metainfo.xml.in" "${metainfo}" @ONLY)
    # Named as the application calls itself: that is how a desktop finds its window's icon.
    install(FILES "${sources}/lumora.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${metainfo}" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES "${sources}/lumora.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(
        FILES
            "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
            "${PROJECT_SOURCE_DIR}/LICENSE"
            "${PROJECT_SOURCE_DIR}/README.md"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    )
endfunction()
