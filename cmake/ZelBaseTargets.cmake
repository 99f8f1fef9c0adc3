# What every target of this code base is compiled with.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

if(PROJECT_IS_TOP_LEVEL)
  find_program(ZELBASE_CCACHE ccache)
  if(ZELBASE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # What it asks for where headers are precompiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZELBASE_CCACHE})
  endif()
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

# Warnings are errors in a checkout of its own only, so that a newer compiler does not stop a host's build.
function(zelbase_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  # The order of floating-point operations is part of the interface: nothing may be contracted or reordered. That goes for
  # the inline functions of the headers in a host's own files, too.
  target_compile_options(${target} PUBLIC -ffp-contract=off)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                         $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror>)
  # g++ 12 sees overlapping copies in "text" + std::string at -O2 and above that are not there (its bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(ZELBASE_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ZELBASE_SANITIZE} -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
    if(ZELBASE_SANITIZE MATCHES "integer")
      # The test preset stops at the first find; UBSAN_OPTIONS=halt_on_error=0 tells all of them in one run. A compiler cache does not
      # look into the list; it sees another name when there is something else in it.
      set(list ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/integer-ignored.txt)
      file(MD5 ${list} checksum)
      set(ignored ${PROJECT_BINARY_DIR}/integer-ignored-${checksum}.txt)
      configure_file(${list} ${ignored} COPYONLY)
      target_compile_options(${target} PRIVATE -fsanitize-recover=all -fsanitize-ignorelist=${ignored})
    endif()
    # Instrumented code misleads g++'s analysis of what is initialised, in the standard library's own headers, too.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(${target} PUBLIC -fsanitize=${ZELBASE_SANITIZE})
  endif()
endfunction()
