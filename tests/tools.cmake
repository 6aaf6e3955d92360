tavo_add_test(upssim LIBRARIES tavo_upssim Qt5::Network
  SOURCES support/upssimprocess.cpp support/upssimprocess.h)
foreach(test sampledriver driverports)
  tavo_add_test(${test} LIBRARIES tavo_comm tavo_registermap LABELS threads
    SOURCES support/driverclient.cpp support/driverclient.h
            support/upssimprocess.cpp support/upssimprocess.h)
  add_dependencies(tst_${test} sampledriver)
endforeach()
foreach(test upssim sampledriver driverports)
  target_compile_definitions(tst_${test} PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
  add_dependencies(tst_${test} upssim)
endforeach()

# The driver of the documents.
tavo_add_test(exampledriver LIBRARIES tavo_driverapi kx300_client)
target_compile_definitions(tst_exampledriver PRIVATE EXAMPLE_DRIVER="$<TARGET_FILE:example-driver>")
add_dependencies(tst_exampledriver example-driver)

# The user at one end, the simulated UPS at the other.
foreach(test walkcontrol walkvalues)
  tavo_add_test(${test}
    LIBRARIES tavo_client tavo_view kx300_family tavo_registermap
    SOURCES support/farend.cpp support/farend.h
            support/upssimprocess.cpp support/upssimprocess.h
            support/upswalk.cpp support/upswalk.h)
  target_compile_definitions(tst_${test} PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
  add_dependencies(tst_${test} sampledriver upssim)
endforeach()

tavo_add_test(fuzzcorpus LIBRARIES tavo_fuzz kx300_family)
target_compile_definitions(tst_fuzzcorpus PRIVATE CORPUS="${PROJECT_SOURCE_DIR}/fuzz/corpus")

if(TAVO_SANITIZE)
  set(run ${CMAKE_CURRENT_BINARY_DIR}/run/soak)
  file(MAKE_DIRECTORY ${run})
  add_test(NAME soak COMMAND kx300_soak $<TARGET_FILE:kx300_client> 60)
  set_tests_properties(soak PROPERTIES
    TIMEOUT 600
    LABELS "threads;soak"
    RESOURCE_LOCK host-files
    WORKING_DIRECTORY ${run}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=${lsan_options};\
ASAN_OPTIONS=quarantine_size_mb=16;TSAN_OPTIONS=ignore_noninstrumented_modules=1")
endif()
