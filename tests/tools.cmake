if(TAVO_TOOLS)
  tavo_add_test(upssim LIBRARIES tavo_upssim)
  tavo_add_test(sampledriver LIBRARIES tavo_comm LABELS threads
    SOURCES support/upssimprocess.cpp support/upssimprocess.h)
  target_compile_definitions(tst_sampledriver PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
  add_dependencies(tst_sampledriver upssim sampledriver)

  tavo_add_test(fuzzcorpus LIBRARIES tavo_fuzz)
  target_compile_definitions(tst_fuzzcorpus PRIVATE CORPUS="${PROJECT_SOURCE_DIR}/fuzz/corpus")

  if(TAVO_SANITIZE)
    set(run ${CMAKE_CURRENT_BINARY_DIR}/run/soak)
    file(MAKE_DIRECTORY ${run})
    add_test(NAME soak COMMAND kx300_soak $<TARGET_FILE:kx300_client> 60)
    set_tests_properties(soak PROPERTIES
      TIMEOUT 300
      LABELS "threads;soak"
      WORKING_DIRECTORY ${run}
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=${lsan_options};\
ASAN_OPTIONS=quarantine_size_mb=16;TSAN_OPTIONS=ignore_noninstrumented_modules=1")
  endif()
endif()
