# Warnings for the project's own targets; third-party headers come in as system includes.
function(harmony_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow=local -Wnon-virtual-dtor)
  if(HARMONY_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
