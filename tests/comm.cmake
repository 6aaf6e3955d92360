tavo_add_test(modbusframe LIBRARIES tavo_comm)
tavo_add_test(inisettings LIBRARIES tavo_comm)
tavo_add_test(trafficlog LIBRARIES tavo_comm)
tavo_add_test(serialport LIBRARIES tavo_comm ${CMAKE_DL_LIBS})
tavo_add_test(commio LIBRARIES tavo_comm LABELS threads)
tavo_add_test(commwaits LIBRARIES tavo_comm ${CMAKE_DL_LIBS} LABELS threads)
tavo_add_test(portmanage LIBRARIES tavo_comm LABELS threads)
tavo_add_test(sharedline LIBRARIES tavo_comm LABELS threads)

find_package(PkgConfig REQUIRED)
pkg_check_modules(UMOCKDEV REQUIRED IMPORTED_TARGET umockdev-1.0)
tavo_add_test(hid LIBRARIES tavo_comm PkgConfig::UMOCKDEV WRAPPER umockdev-wrapper)
if(TAVO_SANITIZE)
  # The wrapper's library is loaded first, which the sanitizer's runtime wants for itself.
  set_property(TEST hid APPEND PROPERTY ENVIRONMENT "ASAN_OPTIONS=verify_asan_link_order=0")
endif()

# Ends itself while all of comm is busy.
add_executable(busyexit support/busyexit.cpp)
target_link_libraries(busyexit PRIVATE tavo_options tavo_test_support tavo_comm)
target_compile_definitions(tst_sharedline PRIVATE BUSY_EXIT="$<TARGET_FILE:busyexit>")
add_dependencies(tst_sharedline busyexit)
