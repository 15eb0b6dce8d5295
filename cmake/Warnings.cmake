# Warnings are errors in everything that is ours: link lumidex_warnings privately.
add_library(lumidex_warnings INTERFACE)
if(MSVC)
  target_compile_options(lumidex_warnings INTERFACE /W4 /WX /permissive- /utf-8)
else()
  target_compile_options(lumidex_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
