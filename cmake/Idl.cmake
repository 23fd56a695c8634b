# Running the interface compiler: widl when cross-compiling, MIDL on Windows.

set(MORVANE_IDL_OUT ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${MORVANE_IDL_OUT})

if(MSVC)
    find_program(MORVANE_MIDL midl REQUIRED)
else()
    find_program(MORVANE_WIDL x86_64-w64-mingw32-widl REQUIRED)
    set(MORVANE_WINE_IDL /usr/include/wine/wine/windows CACHE PATH "Folder with the platform's IDL files")
    set(MORVANE_WINE_LIB /usr/lib/x86_64-linux-gnu/wine/x86_64-windows CACHE PATH "Folder with stdole2.tlb")
    set(MORVANE_WIDL_FLAGS --win64 -I${MORVANE_WINE_IDL} -L${MORVANE_WINE_LIB} -I${PROJECT_SOURCE_DIR}
                           -I${PROJECT_SOURCE_DIR}/host/idl -I${MORVANE_IDL_OUT})
endif()

# morvane_idl_header(source header DEPENDS ...): the C++ header of an IDL file. The header is replaced only when its
# text changes, so that editing a help string does not rebuild everything.
function(morvane_idl_header source header)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    set(out ${MORVANE_IDL_OUT}/${header})
    get_filename_component(dir ${out} DIRECTORY)
    file(MAKE_DIRECTORY ${dir})
    if(MSVC)
        set(command ${MORVANE_MIDL} /nologo /env x64 /I ${PROJECT_SOURCE_DIR}
                    /I ${PROJECT_SOURCE_DIR}/host/idl /I ${MORVANE_IDL_OUT} /h ${out}.new /iid nul /proxy nul
                    /dlldata nul /notlb ${source})
    else()
        set(command ${MORVANE_WIDL} ${MORVANE_WIDL_FLAGS} -h -o ${out}.new ${source})
    endif()
    add_custom_command(
        OUTPUT ${out}
        COMMAND ${command}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${out}.new ${out}
        DEPENDS ${source} ${arg_DEPENDS}
        COMMENT "Interface header ${header}"
        VERBATIM)
endfunction()

# morvane_idl_typelib(source library DEPENDS ...): the type library of an IDL file.
function(morvane_idl_typelib source library)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    set(out ${MORVANE_IDL_OUT}/${library})
    if(MSVC)
        set(command ${MORVANE_MIDL} /nologo /env x64 /I ${PROJECT_SOURCE_DIR} /I ${MORVANE_IDL_OUT} /tlb ${out} /h nul
                    /iid nul /proxy nul /dlldata nul ${source})
    else()
        set(command ${MORVANE_WIDL} ${MORVANE_WIDL_FLAGS} -t -o ${out} ${source})
    endif()
    add_custom_command(
        OUTPUT ${out}
        COMMAND ${command}
        DEPENDS ${source} ${arg_DEPENDS}
        COMMENT "Type library ${library}"
        VERBATIM)
endfunction()

# morvane_idl_identifiers(source file DEPENDS ...): C source that defines the IDL file's identifiers (IID_IThing).
function(morvane_idl_identifiers source file)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    set(out ${MORVANE_IDL_OUT}/${file})
    if(MSVC)
        set(command ${MORVANE_MIDL} /nologo /env x64 /I ${PROJECT_SOURCE_DIR} /I ${PROJECT_SOURCE_DIR}/host/idl
                    /I ${MORVANE_IDL_OUT} /h nul /iid ${out} /proxy nul /dlldata nul /notlb ${source})
    else()
        set(command ${MORVANE_WIDL} ${MORVANE_WIDL_FLAGS} -u -o ${out} ${source})
    endif()
    add_custom_command(OUTPUT ${out} COMMAND ${command} DEPENDS ${source} ${arg_DEPENDS}
        COMMENT "Interface identifiers ${file}" VERBATIM)
endfunction()

# morvane_idl_marshalling(source stem DEPENDS ...): proxies and stubs (<stem>_p.c) for the interfaces of an IDL file,
# and the list that names them to the run-time (<stem>_dlldata.c). The code includes the file's header by its bare name.
function(morvane_idl_marshalling source stem)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    set(out ${MORVANE_IDL_OUT}/${stem})
    get_filename_component(name ${stem} NAME)
    if(MSVC)
        set(commands
            COMMAND ${MORVANE_MIDL} /nologo /env x64 /Oicf /I ${PROJECT_SOURCE_DIR} /I ${PROJECT_SOURCE_DIR}/host/idl
                    /I ${MORVANE_IDL_OUT} /h nul /iid nul /proxy ${out}_p.c /dlldata ${out}_dlldata.c /notlb ${source})
    else()
        set(commands
            COMMAND ${MORVANE_WIDL} ${MORVANE_WIDL_FLAGS} -Oicf -p -o ${out}_p.c ${source}
            COMMAND ${MORVANE_WIDL} ${MORVANE_WIDL_FLAGS} --dlldata-only -o ${out}_dlldata.c ${name})
    endif()
    add_custom_command(
        OUTPUT ${out}_p.c ${out}_dlldata.c
        ${commands}
        DEPENDS ${source} ${arg_DEPENDS}
        COMMENT "Marshalling ${stem}"
        VERBATIM)
endfunction()
