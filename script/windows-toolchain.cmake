# Compiles for Windows on Debian. The programs need no library beside them, and are tried with wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Without the time in it, the same source makes the same program.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

# Nothing of the system that compiles is taken, but what script/on-windows and script/windows-qt have put here.
get_filename_component(made_for_windows ${CMAKE_CURRENT_LIST_DIR}/../build/windows ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH ${made_for_windows}/libraries ${made_for_windows}/qt)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
