# The DLL itself.

# Marshalling is generated C; nothing of it is ours, so its warnings are not either.
add_library(morvane_marshalling STATIC
    ${MORVANE_IDL_OUT}/module/marshalling_p.c
    ${MORVANE_IDL_OUT}/module/control_identifiers.c
    ${MORVANE_IDL_OUT}/module/host_identifiers.c
    ${MORVANE_IDL_OUT}/module/marshalling_dlldata.c)
target_include_directories(morvane_marshalling PRIVATE
    ${PROJECT_SOURCE_DIR}
    ${MORVANE_IDL_OUT}
    ${MORVANE_IDL_OUT}/controls)
target_compile_definitions(morvane_marshalling PRIVATE ENTRY_PREFIX=Prx REGISTER_PROXY_DLL PROXY_DELEGATION
                                                       USE_COMPILER_EXCEPTIONS _WIN32_WINNT=0x0A00)
if(MSVC)
    target_compile_options(morvane_marshalling PRIVATE /w /FI${CMAKE_CURRENT_SOURCE_DIR}/proxy_prelude.h)
else()
    target_compile_options(morvane_marshalling PRIVATE -w -include ${CMAKE_CURRENT_SOURCE_DIR}/proxy_prelude.h)
endif()
target_link_libraries(morvane_marshalling PRIVATE morvane_control_interfaces rpcrt4)

# What the DLL and its tests share.
morvane_library(morvane_module
    SOURCES
        class_objects.cpp
        module_path.cpp
        server_registration.cpp
        ${MODULE_OUT}/class_table.cpp
    LINKS morvane_registration morvane_com morvane_control_interfaces)
morvane_windows_pch(morvane_module)

# Every static library below controls/ belongs into the DLL.
function(morvane_targets_below folder result)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    get_property(below DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(subfolder ${below})
        morvane_targets_below(${subfolder} found)
        list(APPEND targets ${found})
    endforeach()
    list(FILTER targets EXCLUDE REGEX "_tests$")
    set(${result} ${targets} PARENT_SCOPE)
endfunction()

morvane_targets_below(${PROJECT_SOURCE_DIR}/controls candidates)
foreach(target ${candidates})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL STATIC_LIBRARY)
        target_link_libraries(morvane_module PUBLIC ${target})
    endif()
endforeach()

add_library(morvane SHARED
    exports.cpp
    morvane.def
    version.rc
    ${MODULE_OUT}/registration.rc)
morvane_compile_options(morvane)
target_include_directories(morvane PRIVATE ${MODULE_OUT})
target_link_libraries(morvane PRIVATE morvane_module morvane_marshalling rpcrt4)
if(TARGET morvane_resources)
    target_link_libraries(morvane PRIVATE morvane_resources)
endif()
set_target_properties(morvane PROPERTIES
    OUTPUT_NAME Morvane
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set_source_files_properties(${MODULE_OUT}/registration.rc PROPERTIES
    OBJECT_DEPENDS "${MODULE_OUT}/morvane.tlb;${CMAKE_CURRENT_LIST_DIR}/class_table.toml;${CMAKE_CURRENT_LIST_DIR}/generate.py")

morvane_windows_tests(SOURCES module_test.cpp registration_test.cpp LINKS morvane_control_interfaces morvane_com
    morvane_registration)
add_dependencies(windows_tests morvane)
