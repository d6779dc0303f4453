# Cross-building vqk.dll for 64-bit Windows with Debian's MinGW-w64. The posix thread
# model is the one whose runtime has std::thread and OpenMP (libwinpthread, libgomp).
# Programs built here run through Wine, so CTest and gtest discovery can execute them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VQK_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VQK_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VQK_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${VQK_MINGW_TRIPLET}-windres)

# Headers and libraries come only from the MinGW tree; never pick up the host's.
set(CMAKE_FIND_ROOT_PATH /usr/${VQK_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Wine's own prefix lives in the build folder, so a fresh clone creates its own and
# never touches the user's; its diagnostics stay out of the test output.
find_program(VQK_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_DEFAULT_PATH)
if(NOT VQK_WINE)
  find_program(VQK_WINE NAMES wine64 wine)
endif()
get_filename_component(vqk_wine_dir "${VQK_WINE}" DIRECTORY)
find_program(VQK_WINESERVER NAMES wineserver64 wineserver PATHS ${vqk_wine_dir} /usr/lib/wine
  NO_DEFAULT_PATH)
if(VQK_WINE AND VQK_WINESERVER)
  set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_COMMAND} -E env WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all
    VQK_WINE=${VQK_WINE} VQK_WINESERVER=${VQK_WINESERVER}
    sh ${CMAKE_CURRENT_LIST_DIR}/wine_run.sh)
endif()

# Names and lines in call stacks come from the DWARF that GCC writes into the PE files;
# Wine's DbgHelp reads version 4 (GCC 12 writes 5 unless told).
set(CMAKE_C_FLAGS_INIT "-gdwarf-4")
set(CMAKE_CXX_FLAGS_INIT "-gdwarf-4")
