tavo_add_test(plugin LIBRARIES tavo_hostapi)
target_compile_definitions(tst_plugin PRIVATE PLUGIN_FILE="$<TARGET_FILE:kx300_client>")
add_dependencies(tst_plugin kx300_client)

# Exports some of the plug-in's names.
add_library(foreignsymbols MODULE support/foreignsymbols.cpp)
target_link_libraries(foreignsymbols PRIVATE tavo_options)
tavo_add_test(foreignsymbols LIBRARIES tavo_hostapi)
tavo_test_driver(foreignsymbols ${drivers}/complete)
target_compile_definitions(tst_foreignsymbols PRIVATE
  PLUGIN_FILE="$<TARGET_FILE:kx300_client>" FOREIGN_FILE="$<TARGET_FILE:foreignsymbols>")
add_dependencies(tst_foreignsymbols kx300_client foreignsymbols)

# A room includes what an arrow leads to, and nothing else of ours.
add_test(NAME borders COMMAND ${CMAKE_COMMAND}
  -DCOMMANDS=${PROJECT_BINARY_DIR}/compile_commands.json -DCOMPILER=${CMAKE_CXX_COMPILER}
  -DSOURCE_DIR=${PROJECT_SOURCE_DIR} -DWORK_DIR=${CMAKE_CURRENT_BINARY_DIR}/run/borders
  -P ${CMAKE_CURRENT_SOURCE_DIR}/borders.cmake)
