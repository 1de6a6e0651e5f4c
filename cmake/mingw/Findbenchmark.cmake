# Builds Google Benchmark from Debian's source package; no binary package contains the sources.
set(benchmark_SOURCE_DIR "${PROJECT_SOURCE_DIR}/build/debian-source/benchmark" CACHE PATH
    "Folder of Google Benchmark's sources")
if(NOT EXISTS "${benchmark_SOURCE_DIR}/CMakeLists.txt")
    message(FATAL_ERROR "Google Benchmark's sources are not in '${benchmark_SOURCE_DIR}'; ./dev bench-windows fetches them.")
endif()
if(NOT TARGET benchmark::benchmark)
    foreach(option IN ITEMS BENCHMARK_ENABLE_TESTING BENCHMARK_ENABLE_INSTALL BENCHMARK_ENABLE_WERROR)
        set(${option} OFF)
    endforeach()
    # A static library, so that benchmarks need no other DLL.
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory("${benchmark_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/benchmark" EXCLUDE_FROM_ALL SYSTEM)
endif()
set(benchmark_FOUND TRUE)
