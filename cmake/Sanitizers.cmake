# A comma-separated list for -fsanitize=, applied to the whole build; a finding ends the program. An
# outer object of another compiler has no type information, so calls through COM tables are not
# checked for it.
set(LUMIDEX_SANITIZE "" CACHE STRING "Sanitizers to build with, as in address,undefined")
if(LUMIDEX_SANITIZE)
  add_compile_options(-fsanitize=${LUMIDEX_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${LUMIDEX_SANITIZE})
endif()
