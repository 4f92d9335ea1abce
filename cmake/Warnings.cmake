# Warnings of all targets of this project; errors where WELDLINE_WERROR is on.
function(weldline_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
  if(WELDLINE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
