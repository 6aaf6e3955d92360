# Plug-ins for the host to load or to refuse.
set(fixtures fakeclient wrongiid wrongclass wrongbase unresolved)
foreach(fixture ${fixtures})
  add_library(devhost_${fixture} MODULE devhost/${fixture}.cpp)
  target_link_libraries(devhost_${fixture} PRIVATE tavo_options tavo_hostapi)
  set_target_properties(devhost_${fixture} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/fixtures PREFIX "" OUTPUT_NAME ${fixture})
  list(APPEND fixture_targets devhost_${fixture})
endforeach()

tavo_add_test(devhost
  LIBRARIES tavo_devhost
  SOURCES support/hostprocess.cpp support/hostprocess.h
  ENVIRONMENT "DEVHOST=$<TARGET_FILE:devhost>;FIXTURES=${CMAKE_CURRENT_BINARY_DIR}/fixtures")
add_dependencies(tst_devhost devhost ${fixture_targets})
