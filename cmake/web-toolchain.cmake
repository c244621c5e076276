# The browser, with Emscripten. The headers and libraries that are not the compiler's own are in the
# folder that cmake/stage fills.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

get_filename_component(PENWICK_WEB_STAGE "${CMAKE_CURRENT_LIST_DIR}/../build/web-stage" ABSOLUTE)
list(PREPEND CMAKE_FIND_ROOT_PATH ${PENWICK_WEB_STAGE})
set(CMAKE_PREFIX_PATH /)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What this compiler's standard library lacks.
get_filename_component(PENWICK_WEB_HEADERS "${CMAKE_CURRENT_LIST_DIR}/../platform/web/include" ABSOLUTE)
add_compile_options("SHELL:-isystem ${PENWICK_WEB_HEADERS}" "SHELL:-isystem ${PENWICK_WEB_STAGE}/include"
                    -fwasm-exceptions)
add_link_options(-fwasm-exceptions)
