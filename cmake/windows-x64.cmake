set(WINDOWS_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/windows-toolchain.cmake)
