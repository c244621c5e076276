# What a program or module for Windows carries besides its code.

string(REPLACE "." "," PENWICK_VERSION_WORDS "${PROJECT_VERSION},0")

# windows_resources(TARGET TEMPLATE DEPENDS FILES ...): compiles the resource script that is made from
# TEMPLATE with the caller's variables.
function(windows_resources target template)
  cmake_parse_arguments(RESOURCES "" "" "DEPENDS" ${ARGN})
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${template} ${script} @ONLY)
  set_source_files_properties(${script} PROPERTIES LANGUAGE RC OBJECT_DEPENDS "${RESOURCES_DEPENDS}")
  target_sources(${target} PRIVATE ${script})
endfunction()

# keep_debug_apart(TARGET): strips the target's file; what a debugger needs goes into a file beside it
# with ".debug" at the end of its name. Preserving dates keeps today's out of the files.
function(keep_debug_apart target)
  add_custom_command(
    TARGET ${target} POST_BUILD VERBATIM
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
    COMMAND ${CMAKE_STRIP} --preserve-dates --strip-all $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --add-gnu-debuglink=$<TARGET_FILE:${target}>.debug
            $<TARGET_FILE:${target}>)
endfunction()
