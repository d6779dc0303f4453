# The MinGW runtime DLLs the library and every program built here load at start: copied
# beside vqk.dll, so that the build folder's bin/ runs as it stands (under Wine or on
# Windows) and installs as one folder.
set(VQK_MINGW_RUNTIME_DLLS)
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libgomp-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${found}")
    # libwinpthread lives in the target tree rather than the compiler's folder.
    find_file(found_${dll} ${dll} PATHS ${CMAKE_FIND_ROOT_PATH} PATH_SUFFIXES lib bin)
    set(found ${found_${dll}})
  endif()
  if(NOT EXISTS "${found}")
    message(FATAL_ERROR "MinGW runtime ${dll} not found")
  endif()
  list(APPEND VQK_MINGW_RUNTIME_DLLS ${found})
endforeach()
add_custom_command(TARGET vqk POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${VQK_MINGW_RUNTIME_DLLS} $<TARGET_FILE_DIR:vqk>)
install(FILES ${VQK_MINGW_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
