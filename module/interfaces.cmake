# What is made from the class table and the controls' IDL: see generate.py.

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

set(MODULE_OUT ${MORVANE_IDL_OUT}/module)
file(GLOB_RECURSE control_fragments RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/controls/*.idl)
file(GLOB host_fragments CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/idl/*.idl)
list(TRANSFORM control_fragments PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE control_fragment_paths)

set(module_idl
    ${MODULE_OUT}/controls.idl
    ${MODULE_OUT}/control_interfaces.idl
    ${MODULE_OUT}/coclasses.idl
    ${MODULE_OUT}/morvane.idl)
add_custom_command(
    OUTPUT ${module_idl} ${MODULE_OUT}/class_table.cpp ${MODULE_OUT}/registration.rc
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/generate.py ${CMAKE_CURRENT_SOURCE_DIR}/class_table.toml
            ${PROJECT_SOURCE_DIR} ${MODULE_OUT} ${control_fragments}
    DEPENDS generate.py class_table.toml ${PROJECT_SOURCE_DIR}/host/idl/host.idl
    COMMENT "Class table, registration scripts and IDL of the component classes"
    VERBATIM)

set(idl_sources ${module_idl} ${control_fragment_paths} ${host_fragments})
morvane_idl_header(${MODULE_OUT}/control_interfaces.idl controls/control_interfaces.h DEPENDS ${idl_sources})
morvane_idl_typelib(${MODULE_OUT}/morvane.idl module/morvane.tlb DEPENDS ${idl_sources})
morvane_idl_marshalling(${MODULE_OUT}/control_interfaces.idl module/marshalling DEPENDS ${idl_sources})
morvane_idl_identifiers(${MODULE_OUT}/control_interfaces.idl module/control_identifiers.c DEPENDS ${idl_sources})
morvane_idl_identifiers(${PROJECT_SOURCE_DIR}/host/idl/host.idl module/host_identifiers.c DEPENDS ${host_fragments})

# The interface compiler spells the import of host.idl as this include.
file(CONFIGURE OUTPUT ${MORVANE_IDL_OUT}/host.h CONTENT "#include \"host/host.h\"\n")

# Linked by every control: "controls/control_interfaces.h" declares all control interfaces, event interfaces and
# classes.
add_custom_target(morvane_control_headers DEPENDS ${MORVANE_IDL_OUT}/controls/control_interfaces.h)
add_library(morvane_control_interfaces INTERFACE)
target_link_libraries(morvane_control_interfaces INTERFACE morvane_host)
add_dependencies(morvane_control_interfaces morvane_control_headers)

add_custom_target(morvane_typelib DEPENDS ${MORVANE_IDL_OUT}/module/morvane.tlb)
