# Adds the plug-in of one model family.
#   tavo_add_plugin(<name> FAMILY <target> OUTPUT_NAME <name of the file>)
# FAMILY is the object library that defines deviceFamily(). SHARED rather than MODULE: the family's
# driver links against the plug-in by its soname.
function(tavo_add_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "FAMILY;OUTPUT_NAME" "")
  set(plugin ${PROJECT_SOURCE_DIR}/plugin)
  add_library(${name} SHARED ${plugin}/plugin.cpp $<TARGET_OBJECTS:${ARG_FAMILY}>)
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${ARG_OUTPUT_NAME}
    LINK_DEPENDS ${plugin}/exports.map
    # Nothing in the plug-in itself calls the exported functions.
    LINK_LIBRARY_OVERRIDE "WHOLE_ARCHIVE,tavo_client,tavo_comm")
  target_link_libraries(${name} PRIVATE tavo_options
    $<LINK_ONLY:tavo_client> $<LINK_ONLY:tavo_comm>)
  target_link_options(${name} PRIVATE
    LINKER:--version-script=${plugin}/exports.map
    # Its own calls, and the callback that it hands out, reach its own functions, whatever library
    # with the same names the process has loaded before.
    LINKER:-Bsymbolic-functions
    # Qt keeps pointers into a plug-in (texts, meta types): its code stays mapped after an unload.
    LINKER:-z,nodelete)
  # Without its family it does not link. The sanitizers' functions come with the program only.
  if(NOT TAVO_SANITIZE)
    target_link_options(${name} PRIVATE LINKER:-z,defs)
  endif()
endfunction()
