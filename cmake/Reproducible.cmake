# Builds of the same sources in different folders give the same bytes: no path of either folder and no
# time gets into a product. Sanitizers and coverage tell of places in the sources, and keep the paths.
add_library(lumidex_reproducible INTERFACE)
if(NOT MSVC AND NOT LUMIDEX_SANITIZE AND NOT LUMIDEX_COVERAGE)
  # Of two rules that fit, the compiler takes the last. A compiler cache may make the paths relative.
  file(RELATIVE_PATH up ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
  target_compile_options(lumidex_reproducible INTERFACE
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)
  if(up)
    target_compile_options(lumidex_reproducible INTERFACE -ffile-prefix-map=${up}=.)
  endif()
endif()
if(MINGW)
  target_link_options(lumidex_reproducible INTERFACE -Wl,--no-insert-timestamp)
elseif(MSVC)
  target_compile_options(lumidex_reproducible INTERFACE /Brepro)
  target_link_options(lumidex_reproducible INTERFACE /Brepro)
endif()
