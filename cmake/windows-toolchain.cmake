# 64-bit Windows with MinGW-w64. The headers and libraries that are not the compiler's own are in the
# folder that cmake/stage fills; nothing from the machine itself is on the compiler's path.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# Windows 7, the oldest system that the host runs on and that these programs are for.
add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601)

# The flavour with standard threads; its library is linked in.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_AR x86_64-w64-mingw32-ar)
set(CMAKE_RANLIB x86_64-w64-mingw32-ranlib)

get_filename_component(PENWICK_WINDOWS_STAGE "${CMAKE_CURRENT_LIST_DIR}/../build/windows-stage" ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH ${PENWICK_WINDOWS_STAGE} /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ZLIB_USE_STATIC_LIBS ON)

# The same sources make the same files, wherever and whenever they are built.
get_filename_component(PENWICK_SOURCES "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${PENWICK_SOURCES}=.>)
add_link_options(-ffile-prefix-map=${PENWICK_SOURCES}=.)  # Parts are compiled when they are linked.

# Everything that is not Windows' own is linked in. Each file may be placed at any address, high ones
# too, and holds no code that can be written.
string(CONCAT penwick_windows_link "-static -static-libgcc -static-libstdc++ "
       "-Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp")
# Programs have as much stack as natively.
set(CMAKE_EXE_LINKER_FLAGS_INIT "${penwick_windows_link} -Wl,--stack,8388608")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${penwick_windows_link}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${penwick_windows_link}")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/under-wine)
