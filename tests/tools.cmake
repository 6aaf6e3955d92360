if(TAVO_TOOLS)
  tavo_add_test(upssim LIBRARIES tavo_upssim)
endif()
