# How every target of the project is compiled, and which folder may see which.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(TILORA_WERROR "Treat warnings as errors" ON)
option(TILORA_FUZZ "Build the fuzz targets; takes clang" OFF)
set(TILORA_SANITIZE "" CACHE STRING "Sanitizers to build with, address,undefined for instance; empty: none")

find_program(TILORA_CCACHE ccache)
if(TILORA_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${TILORA_CCACHE}")
endif()

add_library(tilora_options INTERFACE)
target_include_directories(tilora_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
# Sources that are read together shadow each other's names, which says nothing about any of them.
target_compile_options(tilora_options INTERFACE
  -Wall -Wextra -Wpedantic $<$<NOT:$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>>:-Wshadow> -Wconversion $<$<BOOL:${TILORA_WERROR}>:-Werror>)
if(TILORA_FUZZ)
  target_compile_options(tilora_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TILORA_SANITIZE)
  # Objective-C++ has a compiler of its own, whose sanitizers are not those of the others.
  target_compile_options(tilora_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-fsanitize=${TILORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all>)
  target_link_options(tilora_options INTERFACE -fsanitize=${TILORA_SANITIZE})
endif()

# tilora_library(NAME SOURCES ... [LINKS ...] [PRIVATE_LINKS ...]): the library of one folder; it sees what it links and nothing else.
function(tilora_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tilora_options ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
endfunction()

# tilora_executable(NAME SOURCES ... [LINKS ...])
function(tilora_executable name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tilora_options ${ARG_LINKS})
endfunction()
