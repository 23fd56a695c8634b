# Third-party code, found or built; why each was chosen stands in docs/dependencies.md.

# GoogleTest: Debian installs its sources, which we compile with our own flags; vcpkg has it as a package.
if(EXISTS /usr/src/googletest/CMakeLists.txt)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    foreach(target gtest gtest_main gmock gmock_main)
        target_compile_options(${target} PRIVATE -w)
    endforeach()
else()
    find_package(GTest CONFIG REQUIRED)
    add_library(gtest ALIAS GTest::gtest)
    add_library(gmock ALIAS GTest::gmock)
endif()

find_package(ZLIB REQUIRED)

# pugixml: Debian has it for the build machine only; for other targets its source package is compiled, once per build
# folder. Fuzzing builds it from source too, so that the sanitizers see inside it.
option(MORVANE_PUGIXML_FROM_SOURCE "Compile pugixml from Debian's source package" ${CMAKE_CROSSCOMPILING})
if(MORVANE_PUGIXML_FROM_SOURCE)
    set(pugixml_folder ${PROJECT_SOURCE_DIR}/build/downloads/pugixml-1.13)
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/tools/fetch_pugixml.sh ${pugixml_folder} COMMAND_ERROR_IS_FATAL ANY)
    add_library(morvane_pugixml STATIC EXCLUDE_FROM_ALL ${pugixml_folder}/src/pugixml.cpp)
    target_include_directories(morvane_pugixml SYSTEM PUBLIC ${pugixml_folder}/src)
else()
    find_package(pugixml CONFIG REQUIRED)
    add_library(morvane_pugixml INTERFACE)
    target_link_libraries(morvane_pugixml INTERFACE pugixml::pugixml)
endif()
