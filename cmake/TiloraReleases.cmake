# The releases as CHANGELOG.md has them, for everything that is handed out.
set(TILORA_CHANGELOG "${CMAKE_CURRENT_LIST_DIR}/../CHANGELOG.md")

# tilora_releases(PREFIX): PREFIX_VERSIONS and PREFIX_DATES, newest first, a date like 2026-11-21 for each version.
function(tilora_releases prefix)
  file(STRINGS "${TILORA_CHANGELOG}" headings REGEX "^## [0-9]")
  set(versions)
  set(dates)
  foreach(heading IN LISTS headings)
    if(NOT heading MATCHES "^## ([0-9]+\\.[0-9]+\\.[0-9]+) \\(([0-9]+-[0-9][0-9]-[0-9][0-9])\\)$")
      message(FATAL_ERROR "CHANGELOG.md: a heading is \"## 1.2.3 (2026-01-31)\", not \"${heading}\"")
    endif()
    list(APPEND versions "${CMAKE_MATCH_1}")
    list(APPEND dates "${CMAKE_MATCH_2}")
  endforeach()
  set(${prefix}_VERSIONS "${versions}" PARENT_SCOPE)
  set(${prefix}_DATES "${dates}" PARENT_SCOPE)
endfunction()
