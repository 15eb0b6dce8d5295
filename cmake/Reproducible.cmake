# Builds of the same sources in different folders give the same bytes: no path of either folder and no
# time gets into a product. Paths stand in the debug information alone. Sanitizers and coverage tell of
# places in the sources, and keep theirs.
add_library(lumidex_reproducible INTERFACE)
if(NOT MSVC AND NOT LUMIDEX_SANITIZE AND NOT LUMIDEX_COVERAGE)
  # Of the rules that fit, the compiler takes the last. A compiler cache may make paths relative to the
  # build folder, which the third is for, and adds options of its own, which g++ would note.
  file(RELATIVE_PATH up ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
  string(REGEX REPLACE "/$" "" up "${up}")
  foreach(folder IN ITEMS ${PROJECT_SOURCE_DIR} ${CMAKE_BINARY_DIR} ${up})
    target_compile_options(lumidex_reproducible INTERFACE -fdebug-prefix-map=${folder}=.)
  endforeach()
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(lumidex_reproducible INTERFACE -gno-record-gcc-switches)
  endif()
endif()
if(MINGW)
  target_link_options(lumidex_reproducible INTERFACE -Wl,--no-insert-timestamp)
elseif(MSVC)
  target_compile_options(lumidex_reproducible INTERFACE /Brepro)
  target_link_options(lumidex_reproducible INTERFACE /Brepro)
endif()
