# The date of the version, from its heading in the list of changes, which no version is without.
set(VERSION_HEADING "^## ${PROJECT_VERSION} \\(([0-9-]+)\\)$")
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md TARVANE_VERSION_DATE REGEX "${VERSION_HEADING}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
if(NOT TARVANE_VERSION_DATE)
    message(FATAL_ERROR "CHANGELOG.md has no heading \"## ${PROJECT_VERSION} (date)\"")
endif()
string(REGEX REPLACE "${VERSION_HEADING}" "\\1" TARVANE_VERSION_DATE "${TARVANE_VERSION_DATE}")
