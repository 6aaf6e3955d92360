# A fake driver in a folder of its own.
#   LIBRARY      bare name under which a family looks for it
#   DEFINITIONS  what it is compiled with
function(tavo_add_fake_driver folder)
  cmake_parse_arguments(ARG "" "LIBRARY" "DEFINITIONS" ${ARGN})
  set(source ${PROJECT_SOURCE_DIR}/tests/support/fakedriver)
  add_library(fakedriver_${folder} MODULE ${source}/fakedriver.cpp ${source}/fakedriver.h)
  target_compile_definitions(fakedriver_${folder} PRIVATE ${ARG_DEFINITIONS})
  # Without it the library would stay in memory after its unloading.
  target_compile_options(fakedriver_${folder} PRIVATE -fno-gnu-unique)
  target_link_libraries(fakedriver_${folder} PRIVATE tavo_driverapi tavo_options)
  set_target_properties(fakedriver_${folder} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/drivers/${folder}
    PREFIX "" OUTPUT_NAME ${ARG_LIBRARY})
endfunction()

# Complete, and with an entry point missing.
tavo_add_fake_driver(complete LIBRARY libkx300_g4_6-20k)
tavo_add_fake_driver(noquery LIBRARY libkx300_g4_6-20k DEFINITIONS WITHOUT_QUERY)
tavo_add_fake_driver(nocontrol LIBRARY libkx300_g4_6-20k DEFINITIONS WITHOUT_CONTROL)

tavo_add_fake_driver(throwing LIBRARY libkx300_g4_6-20k DEFINITIONS THROWS_AT_START)

# Gives a test the folder in which it finds the driver by its bare name.
function(tavo_test_driver name folder)
  target_include_directories(tst_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/fakedriver)
  target_link_libraries(tst_${name} PRIVATE tavo_driverapi)
  set_target_properties(tst_${name} PROPERTIES BUILD_RPATH ${folder})
  add_dependencies(tst_${name} fakedriver_complete fakedriver_noquery fakedriver_nocontrol fakedriver_throwing)
endfunction()

foreach(name clientrules latestvalues)
  tavo_add_test(${name} LIBRARIES tavo_client tavo_view kx300_family)
endforeach()
tavo_add_test(threadloop LIBRARIES tavo_client tavo_view kx300_family LABELS threads)
tavo_add_test(historyexport LIBRARIES tavo_client tavo_view kx300_family)

set(drivers ${CMAKE_CURRENT_BINARY_DIR}/drivers)
tavo_add_test(driverbinding LIBRARIES tavo_client tavo_view kx300_family)
file(MAKE_DIRECTORY ${drivers}/changing)
tavo_test_driver(driverbinding ${drivers}/changing)
target_compile_definitions(tst_driverbinding PRIVATE DRIVERS="${drivers}")

foreach(name tavoclient pollcycle clientthreads manyclients)
  tavo_add_test(${name} LIBRARIES tavo_client tavo_view kx300_family LABELS threads)
  tavo_test_driver(${name} ${drivers}/complete)
endforeach()
