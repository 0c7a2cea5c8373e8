# The compiler's run-time libraries, stripped, beside the programs: classes and exceptions cross the modules, so all of
# them share one copy. UTIL_RUNTIME_DLLS lists the copies.
set(UTIL_RUNTIME_DLLS "")
foreach(_dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_dll} OUTPUT_VARIABLE _path
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${_path}")
    message(FATAL_ERROR "The compiler has no ${_dll}")
  endif()
  set(_copy "${CMAKE_BINARY_DIR}/bin/${_dll}")
  if(NOT EXISTS "${_copy}")
    file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    execute_process(COMMAND ${CMAKE_STRIP} -s -o "${_copy}" "${_path}" COMMAND_ERROR_IS_FATAL ANY)
  endif()
  list(APPEND UTIL_RUNTIME_DLLS "${_copy}")
endforeach()
