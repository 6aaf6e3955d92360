if(TAVO_TOOLS)
  tavo_add_test(upssim LIBRARIES tavo_upssim)
  tavo_add_test(sampledriver LIBRARIES tavo_comm LABELS threads
    SOURCES support/upssimprocess.cpp support/upssimprocess.h)
  target_compile_definitions(tst_sampledriver PRIVATE UPSSIM_FILE="$<TARGET_FILE:upssim>")
  add_dependencies(tst_sampledriver upssim sampledriver)
endif()
