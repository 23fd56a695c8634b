# How targets of this tree are made. Each folder is a target that links only what lies below it.

# morvane_compile_options(target): our own code; warnings are errors.
function(morvane_compile_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /WX /permissive- /Zc:__cplusplus /utf-8)
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                                 -Werror)
        if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
            target_compile_options(${target} PRIVATE -Wno-unknown-warning-option -Wno-overloaded-virtual)
        elseif(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            # GCC 12 sees overlapping copies inside optimised std::string concatenations where there are none.
            target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
        endif()
    endif()
    if(WIN32)
        target_compile_definitions(${target} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
                                                     WINVER=0x0A00 _WIN32_WINNT=0x0A00)
    endif()
    if(MORVANE_CHECKED)
        # Enumerations cross the interfaces as any number; methods check them, so reading one is no fault. Nor is an
        # out-pointer at an odd address, as Wine's automation marshaller hands them in. (The native tests of portable
        # code check alignment.)
        target_compile_options(${target} PRIVATE -O0 -g1 -fsanitize=undefined -fno-sanitize=enum,alignment
                                                 -fsanitize-undefined-trap-on-error)
        target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    endif()
    if(MORVANE_COVERAGE)
        target_compile_options(${target} PRIVATE -O0 -g0 --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# morvane_library(name SOURCES ... LINKS ...): a static library of our own code, warning-free.
function(morvane_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    morvane_compile_options(${name})
    target_link_libraries(${name} PUBLIC ${arg_LINKS})
    if(WIN32 AND NOT MSVC)
        # Names of GUIDs come from the headers; speculative devirtualisation only bloats the forwarders.
        target_compile_options(${name} PRIVATE -fno-devirtualize-speculatively)
    endif()
endfunction()

# morvane_windows_pch(target): the shared precompiled header of everything that speaks COM. It is compiled once for all
# targets: it takes two seconds and 90 megabytes.
function(morvane_windows_pch target)
    if(NOT WIN32)
        return()
    endif()
    if(NOT TARGET morvane_windows_headers)
        set(source ${PROJECT_BINARY_DIR}/generated/windows_headers.cpp)
        file(CONFIGURE OUTPUT ${source} CONTENT "// Carries the shared precompiled header.\n")
        morvane_library(morvane_windows_headers SOURCES ${source})
        target_precompile_headers(morvane_windows_headers PRIVATE ${PROJECT_SOURCE_DIR}/host/windows_headers.h)
        if(NOT MSVC)
            # Lets ccache see through the precompiled header.
            target_compile_options(morvane_windows_headers PRIVATE -fpch-preprocess)
        endif()
    endif()
    target_precompile_headers(${target} REUSE_FROM morvane_windows_headers)
    if(NOT MSVC)
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()

# morvane_native_tests(LINKS ... SOURCES ...): adds tests of portable code to the native test program. They run with
# the address and undefined-behaviour sanitizers on the build machine; on other presets they are not built.
function(morvane_native_tests)
    if(NOT TARGET native_tests)
        return()
    endif()
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(native_tests PRIVATE ${arg_SOURCES})
    target_link_libraries(native_tests PRIVATE ${arg_LINKS})
endfunction()

# morvane_windows_tests(LINKS ... SOURCES ...): adds tests to the program that loads the real Morvane.dll and Ambrel.dll
# beside it and runs under Wine (or on Windows).
function(morvane_windows_tests)
    if(NOT TARGET windows_tests)
        return()
    endif()
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    list(TRANSFORM arg_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(windows_tests PRIVATE ${arg_SOURCES})
    target_link_libraries(windows_tests PRIVATE ${arg_LINKS})
endfunction()

# morvane_test_pch(target HEADERS...): what every test of a program includes, precompiled once.
function(morvane_test_pch target)
    # Programs may hold generated C, too, which these headers are not for.
    list(TRANSFORM ARGN REPLACE ">" "$<ANGLE-R>")
    list(TRANSFORM ARGN REPLACE "(.+)" "$<$<COMPILE_LANGUAGE:CXX>:\\1>")
    target_precompile_headers(${target} PRIVATE ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    elseif(NOT MSVC)
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()
