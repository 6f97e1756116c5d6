set(WINDOWS_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/windows-toolchain.cmake)
