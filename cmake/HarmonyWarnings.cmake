# Warnings for the project's own targets; third-party headers come in as system includes.
function(harmony_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor)
  # clang (fuzz and sanitizer builds) has no -Wshadow=local.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wshadow=local)
  endif()
  if(HARMONY_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
