# Every address that Lumora opens or asks, in one place. Packagers of a fork set
# them on the command line: cmake -DLUMORA_REPOSITORY_URL=… and so on.

set(LUMORA_HOMEPAGE_URL "https://github.com/lumora-app/Lumora-releases/releases"
    CACHE STRING "Release page, opened from the About page")
set(LUMORA_CONTACT_ADDRESS "mailto:hello@lumora.example"
    CACHE STRING "Contact address, opened from the About page")
set(LUMORA_REPOSITORY_URL "https://github.com/lumora-app/Lumora"
    CACHE STRING "Source repository, opened from the About page")
set(LUMORA_HOMEBREW_URL "https://brew.sh"
    CACHE STRING "Homebrew's own site, with its installation instructions")
set(LUMORA_RELEASE_API "https://api.github.com"
    CACHE STRING "Host of the release service that the self-updater asks")
set(LUMORA_RELEASE_OWNER "lumora-app"
    CACHE STRING "Account that owns the release repository")

configure_file(
    "${CMAKE_CURRENT_LIST_DIR}/Addresses.h.in" "${CMAKE_BINARY_DIR}/generated/Addresses.h" @ONLY
)
add_library(lumora_addresses INTERFACE)
target_include_directories(lumora_addresses INTERFACE "${CMAKE_BINARY_DIR}/generated")
