# add_type_library(TARGET): the component's type library, compiled from an interface definition that
# a native tool writes from the member tables, becomes a resource of TARGET. The tool runs on the
# machine that builds, so it comes from a native build beside this one.

set(QM_NATIVE_BUILD ${CMAKE_SOURCE_DIR}/build/release CACHE PATH
    "Folder of the native build that the generator of the interface definition comes from")

find_program(WIDL NAMES ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl REQUIRED)
# The system's basic types, which every type library refers to; Wine brings them along.
file(GLOB standard_types /usr/lib/*/wine/*-windows/stdole2.tlb)
if(NOT standard_types)
    message(FATAL_ERROR "stdole2.tlb is missing: install Debian's package libwine")
endif()
list(GET standard_types 0 standard_types)
get_filename_component(standard_types_folder ${standard_types} DIRECTORY)

function(add_type_library target)
    set(idl ${CMAKE_CURRENT_BINARY_DIR}/QMEvents.idl)
    set(QM_TYPE_LIBRARY ${CMAKE_CURRENT_BINARY_DIR}/QMEvents.tlb)
    # Always asks the native build, which knows what changed; the file changes only with its text.
    add_custom_target(interface_definition
        COMMAND ${CMAKE_COMMAND} --preset release
        COMMAND ${CMAKE_COMMAND} --build ${QM_NATIVE_BUILD} --target make_idl
        COMMAND ${QM_NATIVE_BUILD}/tools/make_idl ${idl}.now
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${idl}.now ${idl}
        BYPRODUCTS ${idl}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        COMMENT "Writing the interface definition"
    )
    add_custom_command(OUTPUT ${QM_TYPE_LIBRARY}
        COMMAND ${WIDL} -t -L ${standard_types_folder} -o ${QM_TYPE_LIBRARY} ${idl}
        DEPENDS ${idl} interface_definition
        COMMENT "Compiling the type library"
    )
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/qmevents.rc)
    configure_file(${CMAKE_SOURCE_DIR}/com/qmevents.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${QM_TYPE_LIBRARY})
    target_sources(${target} PRIVATE ${resources})
    set_target_properties(${target} PROPERTIES QM_TYPE_LIBRARY ${QM_TYPE_LIBRARY})
endfunction()
