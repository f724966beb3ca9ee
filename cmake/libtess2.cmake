# Sources under third_party/, since Debian 12 has no development package. Not held to our warnings, and without
# its assertions in every build: it recovers where they would stop the program.
file(GLOB tess2_sources ${CMAKE_SOURCE_DIR}/third_party/libtess2/*.c)
add_library(tess2 STATIC ${tess2_sources})
target_include_directories(tess2 SYSTEM INTERFACE ${CMAKE_SOURCE_DIR}/third_party/libtess2)
target_compile_options(tess2 PRIVATE -w)
target_compile_definitions(tess2 PRIVATE NDEBUG)
