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
