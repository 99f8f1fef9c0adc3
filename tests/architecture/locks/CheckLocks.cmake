# Has clang check the lock annotations of every source of the library that uses a lock, and then that it does find what is
# wrong in a file that breaks each rule once.
#
#   cmake -DCLANG=<clang++> -DROOT=<checkout> -P CheckLocks.cmake

set(check ${CLANG} -std=c++20 -I${ROOT} -fsyntax-only -Wthread-safety -Werror -ferror-limit=0 -fno-color-diagnostics)
set(uses_a_lock "#include \"zelbase/(concurrency/|platform/LockGuard|platform/ThreadSafety|platform/detail/Mutex)")

file(GLOB_RECURSE sources ${ROOT}/zelbase/*.cpp)
list(FILTER sources EXCLUDE REGEX "/win32/")
set(checked)
foreach(source IN LISTS sources)
  file(STRINGS ${source} found REGEX "${uses_a_lock}")
  string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
  if(NOT found AND EXISTS ${header})
    file(STRINGS ${header} found REGEX "${uses_a_lock}")
  endif()
  if(found)
    list(APPEND checked ${source})
  endif()
endforeach()
list(LENGTH checked count)
if(count LESS 15)
  message(FATAL_ERROR "Only ${count} sources with a lock were found.")
endif()
execute_process(COMMAND ${check} ${checked} RESULT_VARIABLE result ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The lock annotations do not hold:\n${output}")
endif()
message(STATUS "${count} sources keep the rules of their locks")

execute_process(COMMAND ${check} ${ROOT}/tests/architecture/locks/BreaksTheRules.cpp
                RESULT_VARIABLE result ERROR_VARIABLE output)
foreach(error "reading variable 'm_depth' requires holding lock 'm_lock'"
              "writing variable 'm_draught' requires holding lock 'm_shared' exclusively"
              "calling function 'Measure' requires holding lock 'm_lock' exclusively"
              "mutex 'm_lock' is still held at the end of function"
              "releasing mutex 'm_lock' that was not held"
              "calling function 'Wait' requires holding mutex 'm_mutex' exclusively")
  string(FIND "${output}" "${error}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "The check does not find \"${error}\":\n${output}")
  endif()
endforeach()
string(REGEX MATCHALL "error: " errors "${output}")
list(LENGTH errors count)
if(result EQUAL 0 OR NOT count EQUAL 6)
  message(FATAL_ERROR "Six errors were expected:\n${output}")
endif()
message(STATUS "and whoever breaks them is found")
