# Builds GoogleTest from the sources in Debian's package googletest.
set(GTest_SOURCE_DIR "/usr/src/googletest" CACHE PATH "Folder of GoogleTest's sources")
if(NOT EXISTS "${GTest_SOURCE_DIR}/CMakeLists.txt")
    message(FATAL_ERROR "GoogleTest's sources are not in '${GTest_SOURCE_DIR}'; ./dev test-windows installs them.")
endif()
if(NOT TARGET GTest::gtest)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    # A static library, so that test programs need no other DLL.
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory("${GTest_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
endif()
set(GTest_FOUND TRUE)
