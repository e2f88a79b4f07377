# What Debian wants otherwise than other systems in an installed tree; run by CPack before it packs.

set(shared "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share")
set(documents "${shared}/doc/lumora")
set(templates "${CMAKE_CURRENT_LIST_DIR}")

function(compress)
    execute_process(COMMAND gzip -9n ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(system "${CPACK_LUMORA_BUILT_ON}")
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file("${templates}/changelog.in" "${documents}/changelog.Debian" @ONLY)
file(RENAME "${documents}/CHANGELOG.md" "${documents}/changelog")
file(REMOVE "${documents}/LICENSE")
file(COPY "${templates}/copyright" DESTINATION "${documents}")
file(MAKE_DIRECTORY "${shared}/lintian/overrides")
file(COPY_FILE "${templates}/lintian-overrides" "${shared}/lintian/overrides/lumora")
compress("${documents}/changelog" "${documents}/changelog.Debian" "${shared}/man/man1/lumora.1")
