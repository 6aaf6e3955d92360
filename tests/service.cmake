find_package(Qt5 5.15 REQUIRED COMPONENTS DBus)

add_library(tavo_service_test_support STATIC
  support/fakemanager.cpp support/fakemanager.h
  support/privatebus.h)
target_link_libraries(tavo_service_test_support
  PUBLIC tavo_service PRIVATE Qt5::DBus tavo_options)

tavo_add_test(controlsocket LIBRARIES tavo_serviceframework Qt5::Network)
tavo_add_test(service LIBRARIES tavo_serviceframework)
tavo_add_test(servicecontroller LIBRARIES tavo_service_test_support)

tavo_add_test(servicelifecycle
  LIBRARIES tavo_service
  WRAPPER ${CMAKE_CURRENT_SOURCE_DIR}/support/with-systemd)

foreach(test service servicecontroller servicelifecycle)
  target_compile_definitions(tst_${test} PRIVATE EXAMPLE_SERVICE="$<TARGET_FILE:exampleservice>")
  add_dependencies(tst_${test} exampleservice)
endforeach()
