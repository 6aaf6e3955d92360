tavo_add_test(viewdata LIBRARIES tavo_view kx300_family)
tavo_add_test(dialog LIBRARIES tavo_view kx300_family)
tavo_add_test(energyline LIBRARIES tavo_view kx300_family)
tavo_add_test(trends LIBRARIES tavo_view kx300_family)
tavo_add_test(tavoview LIBRARIES tavo_view kx300_family SOURCES support/viewtest.h)
tavo_add_test(viewcontrol LIBRARIES tavo_view kx300_family SOURCES support/viewtest.h)
tavo_add_test(viewlook LIBRARIES tavo_view kx300_family SOURCES support/viewtest.h)
tavo_add_test(viewstate LIBRARIES tavo_view kx300_family SOURCES support/viewtest.h)

# To the pixel; a change that is meant is taken over by update-looks.
tavo_add_test(looks LIBRARIES tavo_view kx300_family ${CMAKE_DL_LIBS} SOURCES support/viewtest.h)
target_compile_definitions(tst_looks PRIVATE LOOKS_FILE="${CMAKE_CURRENT_SOURCE_DIR}/looks.txt")
add_custom_target(update-looks
  COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen UPDATE_LOOKS=1 $<TARGET_FILE:tst_looks> VERBATIM)

tavo_add_test(upgrade LIBRARIES tavo_view kx300_family tavo_upgrade tavo_service_test_support)

tavo_add_test(translation LIBRARIES tavo_view kx300_family)
add_dependencies(tst_translation translations)
target_compile_definitions(tst_translation PRIVATE
  CATALOGUE="${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/kx300_g4_6-20k_Client_zh_CN.qm")

# The catalogue holds every text of the sources, and no other.
find_package(Qt5 5.15 REQUIRED COMPONENTS LinguistTools)
get_target_property(lupdate Qt5::lupdate IMPORTED_LOCATION)
add_test(NAME catalogue_is_complete COMMAND ${CMAKE_COMMAND}
  -DLUPDATE=${lupdate} -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
  -DCATALOGUE=kx300_g4_6-20k_Client_zh_CN.ts -DWORK_DIR=${CMAKE_CURRENT_BINARY_DIR}
  -P ${CMAKE_CURRENT_SOURCE_DIR}/catalogue.cmake)
