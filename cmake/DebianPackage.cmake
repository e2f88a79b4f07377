# The Debian package, made of the installed tree by ./scripts/package --deb.
#
# It is for the very release of Debian it is built on, and says so in its version: what its
# libraries' packages are called changes from one to the next.

cmake_host_system_information(RESULT system QUERY DISTRIB_INFO)
if(system_ID STREQUAL "debian")
    set(release "1~deb${system_VERSION_ID}")
else()
    set(release "1~${system_ID}${system_VERSION_ID}")
endif()

string(REPLACE "mailto:" "" mail "${LUMORA_CONTACT_ADDRESS}")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumora)
set(CPACK_PACKAGE_VENDOR "${PROJECT_NAME}")
set(CPACK_PACKAGE_CONTACT "The Lumora developers <${mail}>")
set(CPACK_PACKAGE_HOMEPAGE_URL "${LUMORA_HOMEPAGE_URL}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "window for the Homebrew package manager")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Shows what brew has installed, what is outdated and what there is to be
installed; installs, updates and removes formulae and casks, adds and removes
taps, cleans up and runs brew doctor.

It needs an installed Homebrew, which this package doesn't bring."
)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${release}")
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Every command runs through the login shell; the rest is what programs are linked to.
set(CPACK_DEBIAN_PACKAGE_DEPENDS zsh)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, qt6-wayland")
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")
set(CPACK_LUMORA_BUILT_ON "${system_PRETTY_NAME}")
# Whatever the umask of whoever packs it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
include(CPack)
