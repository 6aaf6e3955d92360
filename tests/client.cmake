# Fake drivers: complete, and with an entry point missing.
function(tavo_add_fake_driver folder)
  add_library(fakedriver_${folder} MODULE
    support/fakedriver/fakedriver.cpp support/fakedriver/fakedriver.h)
  target_compile_definitions(fakedriver_${folder} PRIVATE ${ARGN})
  # Without it the library would stay in memory after its unloading.
  target_compile_options(fakedriver_${folder} PRIVATE -fno-gnu-unique)
  target_link_libraries(fakedriver_${folder} PRIVATE tavo_options)
  set_target_properties(fakedriver_${folder} PROPERTIES
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/drivers/${folder}
    PREFIX "" OUTPUT_NAME libkx300_g4_6-20k)
endfunction()
tavo_add_fake_driver(complete)
tavo_add_fake_driver(noquery WITHOUT_QUERY)
tavo_add_fake_driver(nocontrol WITHOUT_CONTROL)

# Gives a test the folder in which it finds the driver by its bare name.
function(tavo_test_driver name folder)
  target_include_directories(tst_${name} PRIVATE support/fakedriver)
  set_target_properties(tst_${name} PROPERTIES BUILD_RPATH ${folder})
  add_dependencies(tst_${name} fakedriver_complete fakedriver_noquery fakedriver_nocontrol)
endfunction()

tavo_add_test(clientrules LIBRARIES tavo_client tavo_view)
tavo_add_test(historyexport LIBRARIES tavo_client tavo_view)

set(drivers ${CMAKE_CURRENT_BINARY_DIR}/drivers)
tavo_add_test(driverbinding LIBRARIES tavo_client tavo_view)
file(MAKE_DIRECTORY ${drivers}/changing)
tavo_test_driver(driverbinding ${drivers}/changing)
target_compile_definitions(tst_driverbinding PRIVATE DRIVERS="${drivers}")

foreach(name tavoclient clientthreads)
  tavo_add_test(${name} LIBRARIES tavo_client tavo_view LABELS threads)
  tavo_test_driver(${name} ${drivers}/complete)
endforeach()
