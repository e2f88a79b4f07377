# Every address that Lumora opens or asks, in one place. Packagers of a fork set
# them on the command line: cmake -DLUMORA_REPOSITORY_URL=… and so on.
#
# Those that nobody has set lie in the domain example, which is reserved: a name that somebody
# could register would let them ship code to every build that asks there.

set(LUMORA_HOMEPAGE_URL "https://lumora.example/releases"
    CACHE STRING "Release page, opened from the About page")
set(LUMORA_CONTACT_ADDRESS "mailto:hello@lumora.example"
    CACHE STRING "Contact address, opened from the About page")
set(LUMORA_REPOSITORY_URL "https://lumora.example/source"
    CACHE STRING "Source repository, opened from the About page")
set(LUMORA_HOMEBREW_URL "https://brew.sh"
    CACHE STRING "Homebrew's own site, with its installation instructions")
set(LUMORA_RELEASE_API "https://api.lumora.example"
    CACHE STRING "Host of the release service that the self-updater asks")
# No service has accounts with a dot in their name: it stays nobody's when the host is set.
set(LUMORA_RELEASE_OWNER "lumora.example"
    CACHE STRING "Account that owns the release repository")

configure_file(
    "${CMAKE_CURRENT_LIST_DIR}/Addresses.h.in" "${CMAKE_BINARY_DIR}/generated/Addresses.h" @ONLY
)
add_library(lumora_addresses INTERFACE)
target_include_directories(lumora_addresses INTERFACE "${CMAKE_BINARY_DIR}/generated")
