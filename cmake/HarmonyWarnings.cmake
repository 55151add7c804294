# Warnings for the project's own targets; third-party headers come in as system includes.
function(harmony_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -Wrestrict gives false alarms inside std::string at -O3 with GCC 12 (GCC bug 105329),
    # which would break Release builds under -Werror.
    target_compile_options(${target} PRIVATE -Wshadow=local -Wno-restrict)
  else()
    target_compile_options(${target} PRIVATE -Wshadow-uncaptured-local)
  endif()
  if(HARMONY_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
