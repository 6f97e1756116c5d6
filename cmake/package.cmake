# The Windows package, a ZIP: one folder as `App.Modules.Events.Path` names it, with both DLLs, the
# type library and everything that the add-in reads from there. `cpack` in the
# 64-bit build takes that and the 32-bit build beside it.

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(dll_folder x64)
else()
    set(dll_folder x86)
endif()

install(TARGETS QMEvents RUNTIME DESTINATION ${dll_folder} COMPONENT addin)
if(dll_folder STREQUAL x64)
    install(FILES $<TARGET_PROPERTY:QMEvents,QM_TYPE_LIBRARY> DESTINATION . COMPONENT addin)
    foreach(folder data cache pages)
        if(EXISTS ${CMAKE_SOURCE_DIR}/${folder})
            install(DIRECTORY ${folder} DESTINATION . COMPONENT addin)
        endif()
    endforeach()
    # The one library that pages load, where they look for it; npm has fetched it for the tests.
    install(FILES node_modules/d3/dist/d3.min.js DESTINATION node_modules/d3/dist COMPONENT addin)
    install(FILES node_modules/d3/LICENSE DESTINATION node_modules/d3 COMPONENT addin)
    install(DIRECTORY docs/samples/ DESTINATION samples COMPONENT addin)
    install(DIRECTORY docs/ DESTINATION docs COMPONENT addin PATTERN samples EXCLUDE)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME QMEvents)
set(CPACK_PACKAGE_FILE_NAME QMEvents-${PROJECT_VERSION}-windows)
set(CPACK_PACKAGE_VENDOR "Quillmere Events")
set(CPACK_STRIP_FILES ON)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${CMAKE_SOURCE_DIR}/build/windows-x64;QMEvents;addin;/"
    "${CMAKE_SOURCE_DIR}/build/windows-x86;QMEvents;addin;/"
)
include(CPack)
