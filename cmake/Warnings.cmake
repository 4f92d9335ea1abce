# Warnings of all targets of this project; errors where WELDLINE_WERROR is on.
function(weldline_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
  # g++ 12 warns falsely about "literal" + std::string at -O3 (its bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # clang-tidy reads the same options and does not know this one; g++ passes over the first.
    target_compile_options(${target} PRIVATE -Wno-unknown-warning-option -Wno-restrict)
  endif()
  if(WELDLINE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
