# How every component is compiled, and how one is added.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(NOT EMSCRIPTEN)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
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
                    -Woverloaded-virtual)
if(PENWICK_WARNINGS_ARE_ERRORS)
  add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # A unique symbol that a module exports would keep it in memory for ever.
  add_compile_options(-fno-gnu-unique)
  # Lets the compiler cache see into precompiled headers.
  add_compile_options(-fpch-preprocess)
endif()
if(PENWICK_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(PENWICK_SANITIZE)
  add_compile_options(-fsanitize=${PENWICK_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${PENWICK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The checks that the sanitizers insert make GCC see uninitialised values in the standard
    # library's own headers; the other presets keep this warning.
    add_compile_options(-Wno-maybe-uninitialized)
    # These checks of every pointer more than double the time that a build takes. The address sanitizer
    # ends at a null pointer, too, and the fuzz targets' compiler has them all.
    add_compile_options(-fno-sanitize=null,alignment,vptr)
  else()
    # Which function some slots hold depends on the host's release: the plug-in calls one to find out.
    add_compile_options(-fno-sanitize=function)
  endif()
endif()

# common_headers(TARGET): the standard library's headers that most sources include, compiled once for the components of
# this folder and of those in it: they take a third of the time that a source takes. A folder with options of its own
# needs a target of its own. What a source needs it includes all the same: the lint compiles each without them. Clang
# wants every option to be the same, so it goes without.
function(common_headers target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_library(${target} OBJECT EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/cmake/common_headers.cpp)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <charconv> <cmath> <filesystem> <functional> <map>
                                                <memory> <optional> <span> <string> <string_view> <vector>)
    set(COMMON_HEADERS ${target} PARENT_SCOPE)
  endif()
endfunction()

# component(NAME [SOURCES ...] [MAY_USE TARGETS ...]): a static library, or a header-only one without
# SOURCES. A folder's first component is named after it. Everything is included by its path from the
# root. MAY_USE is the complete list of what the sources may include: a test checks every include line
# against it.
function(component name)
  cmake_parse_arguments(COMPONENT "" "" "SOURCES;MAY_USE" ${ARGN})
  if(COMPONENT_SOURCES)
    add_library(${name} STATIC ${COMPONENT_SOURCES})
    set(scope PUBLIC)
    if(COMMON_HEADERS)
      target_precompile_headers(${name} REUSE_FROM ${COMMON_HEADERS})
    endif()
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} ${scope} ${COMPONENT_MAY_USE})
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR}
             OUTPUT_VARIABLE folder)
  get_property(rules GLOBAL PROPERTY PENWICK_INCLUDE_RULES)
  if(NOT rules MATCHES "(^|\n)${folder}\\|")
    # The headers belong to the folder's first target. Where CMAKE_VERIFY_INTERFACE_HEADER_SETS is on,
    # a further target compiles each of them alone.
    file(GLOB headers CONFIGURE_DEPENDS *.h)
    target_sources(${name} ${scope} FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR} FILES ${headers})
  endif()
  list(JOIN COMPONENT_SOURCES "," sources)
  list(JOIN COMPONENT_MAY_USE "," uses)
  set_property(GLOBAL APPEND_STRING PROPERTY PENWICK_INCLUDE_RULES
               "${folder}|${name}|${sources}|${uses}\n")
endfunction()

# Writes the rules of every component, one line each, for the test of the include lines.
function(write_include_rules file)
  get_property(rules GLOBAL PROPERTY PENWICK_INCLUDE_RULES)
  file(WRITE ${file} "${rules}")
endfunction()
