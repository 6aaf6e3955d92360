# What every target of the project is compiled with.
add_library(tavo_options INTERFACE)
target_compile_features(tavo_options INTERFACE cxx_std_17)
target_compile_definitions(tavo_options INTERFACE
  QT_NO_CAST_TO_ASCII
  QT_NO_URL_CAST_FROM_STRING
  QT_DEPRECATED_WARNINGS)
target_compile_options(tavo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Wcast-align -Wshadow
  $<$<BOOL:${TAVO_WERROR}>:-Werror>)

if(TAVO_SANITIZE)
  target_compile_options(tavo_options INTERFACE
    -fsanitize=${TAVO_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(tavo_options INTERFACE -fsanitize=${TAVO_SANITIZE})
endif()
if(TAVO_SANITIZE MATCHES thread)
  # Every executable, so that it comes before Qt when symbols are looked up.
  target_sources(tavo_options INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${PROJECT_SOURCE_DIR}/tests/support/tsanqt.cpp>)
endif()

# Gives an executable the run path from which the driver is found by its bare name: only
# DT_RPATH (not DT_RUNPATH) is searched for libraries that Qt's loader opens. Once installed, the
# device's driver comes first; without one, the sample driver serves the simulated UPS.
function(tavo_driver_run_path target)
  target_link_options(${target} PRIVATE LINKER:--disable-new-dtags)
  set_target_properties(${target} PROPERTIES
    BUILD_RPATH "$ORIGIN/../lib"
    INSTALL_RPATH "$ORIGIN/../${KX300_DRIVER_DIR}:$ORIGIN/../${KX300_SAMPLE_DRIVER_DIR}")
endfunction()
