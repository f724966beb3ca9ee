# Sources under third_party/, since Debian 12 has no package. Not held to our warnings.
add_library(nanosvg STATIC ${CMAKE_SOURCE_DIR}/third_party/nanosvg/nanosvg.c)
target_include_directories(nanosvg SYSTEM INTERFACE ${CMAKE_SOURCE_DIR}/third_party/nanosvg)
target_compile_options(nanosvg PRIVATE -w)
