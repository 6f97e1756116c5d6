# What both Windows builds share; included with WINDOWS_PROCESSOR set. The -posix compilers bring
# std::thread and std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${WINDOWS_PROCESSOR})
set(prefix ${WINDOWS_PROCESSOR}-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-posix) # GoogleTest's project asks for one
set(CMAKE_CXX_COMPILER ${prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${prefix}-windres)
set(CMAKE_OBJDUMP ${prefix}-objdump)

set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
