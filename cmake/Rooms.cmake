# How every room is compiled, and the two ways to add one.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Function addresses and float results must not depend on the optimiser: the art is the same
# bit for bit with every compiler.
add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                    -Wsign-conversion -Wold-style-cast -Wcast-qual -Wnon-virtual-dtor
                    -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # A unique symbol that escapes from a module keeps it in memory for ever.
  add_compile_options(-fno-gnu-unique)
  # Lets the compiler cache see into precompiled headers.
  add_compile_options(-fpch-preprocess)
endif()
if(PENWICK_SANITIZE)
  add_compile_options(-fsanitize=${PENWICK_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${PENWICK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The checks that the sanitizers put between the lines make GCC see uninitialised values in
    # the standard library's own headers; the other presets keep this warning.
    add_compile_options(-Wno-maybe-uninitialized)
  else()
    # Some slots hold one function or another, by the host's release: the plug-in calls the one to learn
    # which it is.
    add_compile_options(-fno-sanitize=function)
  endif()
endif()

# room(NAME [SOURCES ...] [MAY_USE TARGETS ...]): a static library named after its folder; without
# sources a header-only one. Everything is included by its path from the root.
function(room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;MAY_USE" ${ARGN})
  if(ROOM_SOURCES)
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ROOM_MAY_USE})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ROOM_MAY_USE})
  endif()
endfunction()
