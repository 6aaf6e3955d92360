# Plug-ins for the host to load or to refuse.
set(fixtures wrongiid wrongclass unresolved)
foreach(fixture ${fixtures})
  add_library(devhost_${fixture} MODULE devhost/${fixture}.cpp)
  target_link_libraries(devhost_${fixture} PRIVATE tavo_options tavo_hostapi)
  set_target_properties(devhost_${fixture} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/fixtures PREFIX "" OUTPUT_NAME ${fixture})
  list(APPEND fixture_targets devhost_${fixture})
endforeach()
# Defined at last, in a library where no loader looks.
add_library(devhost_nowhere SHARED devhost/nowhere.cpp)
set_target_properties(devhost_nowhere PROPERTIES
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/fixtures/unsearched AUTOMOC OFF)
add_library(devhost_missing MODULE devhost/unresolved.cpp)
target_link_libraries(devhost_missing PRIVATE tavo_options tavo_hostapi devhost_nowhere)
set_target_properties(devhost_missing PROPERTIES SKIP_BUILD_RPATH ON
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/fixtures PREFIX "" OUTPUT_NAME missing)
list(APPEND fixture_targets devhost_missing)

# The plug-in and driver on simulated devices.
tavo_add_test(devhost
  LIBRARIES tavo_devhost
  SOURCES support/hostprocess.cpp support/hostprocess.h
          support/upssimprocess.cpp support/upssimprocess.h
  ENVIRONMENT "DEVHOST=$<TARGET_FILE:devhost>;PLUGIN=$<TARGET_FILE:kx300_client>;\
FIXTURES=${CMAKE_CURRENT_BINARY_DIR}/fixtures")
target_compile_definitions(tst_devhost PRIVATE
  UPSSIM_FILE="$<TARGET_FILE:upssim>" PROJECT_VERSION="${PROJECT_VERSION}")
add_dependencies(tst_devhost devhost kx300_client upssim sampledriver ${fixture_targets})

# Its parts, without a plug-in.
foreach(part hostparts alarmlog)
  tavo_add_test(${part} LIBRARIES tavo_devhost kx300_family)
endforeach()

# The window on a room of simulated UPSs.
tavo_add_test(hostfleet
  LIBRARIES tavo_devhost
  SOURCES support/upssimprocess.cpp support/upssimprocess.h support/windowtest.h
  ENVIRONMENT "PLUGIN=$<TARGET_FILE:kx300_client>;QTEST_FUNCTION_TIMEOUT=4000000")
target_compile_definitions(tst_hostfleet PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
add_dependencies(tst_hostfleet kx300_client upssim sampledriver)

# The window in the test's own process, offscreen and once in a real X server with a window manager,
# which decides on focus and frames.
set(window_environment "PLUGIN=$<TARGET_FILE:kx300_client>")
tavo_add_test(hostwindow
  LIBRARIES tavo_devhost
  SOURCES support/upssimprocess.cpp support/upssimprocess.h support/windowtest.h
  ENVIRONMENT "${window_environment}")
target_compile_definitions(tst_hostwindow PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
add_dependencies(tst_hostwindow kx300_client upssim sampledriver)
find_program(XVFB_RUN xvfb-run REQUIRED)
find_program(WINDOW_MANAGER evilwm REQUIRED)
add_test(NAME hostwindow_x11
  COMMAND ${XVFB_RUN} -a -s "-screen 0 1280x800x24"
    sh -c "${WINDOW_MANAGER} & exec $<TARGET_FILE:tst_hostwindow>")
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/run/hostwindow_x11)
set_tests_properties(hostfleet PROPERTIES TIMEOUT 4000) # its long form
set_tests_properties(hostwindow_x11 PROPERTIES
  TIMEOUT 300
  WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/run/hostwindow_x11
  # Qt's X11 platform and D-Bus leak at exit; our own leaks show in the run without windows.
  ENVIRONMENT "QT_QPA_PLATFORM=xcb;ASAN_OPTIONS=detect_leaks=0;${window_environment}")

# The catalogue holds every text of the host's sources, and no other.
get_target_property(lupdate Qt5::lupdate IMPORTED_LOCATION)
add_test(NAME host_catalogue_is_complete COMMAND ${CMAKE_COMMAND}
  -DLUPDATE=${lupdate} -DFOLDER=${PROJECT_SOURCE_DIR}/tools/devhost
  -DCATALOGUE=devhost_zh_CN.ts -DWORK_DIR=${CMAKE_CURRENT_BINARY_DIR}
  -P ${CMAKE_CURRENT_SOURCE_DIR}/catalogue.cmake)
