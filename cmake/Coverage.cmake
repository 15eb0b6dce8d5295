# Counts in every program how often each line and branch is reached, for llvm-cov.
option(LUMIDEX_COVERAGE "Count what the tests reach (clang)" OFF)
if(LUMIDEX_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()
