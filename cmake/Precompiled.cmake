# Headers of others, parsed once: more than half of the time of an ordinary source went into them. Our own headers
# stay out, so that each source still names what it uses and an edit builds again only what it touches.
option(OMBRELUNE_PRECOMPILE "Parse the headers of libraries once" ON)

# One object library carries them for every target of the same kind.
function(ombrelune_precompiled_headers name)
    file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp.new "")
    file(COPY_FILE ${CMAKE_BINARY_DIR}/${name}.cpp.new ${CMAKE_BINARY_DIR}/${name}.cpp ONLY_IF_DIFFERENT)
    add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
    target_precompile_headers(${name} PRIVATE ${ARGN})
    target_link_libraries(${name} PRIVATE fmt::fmt)
endfunction()

set(common_headers
    <algorithm> <array> <atomic> <bit> <charconv> <cmath> <condition_variable> <cstdint> <cstdlib> <cstring> <filesystem>
    <functional> <limits> <map> <memory> <mutex> <numbers> <optional> <random> <set> <string> <string_view> <type_traits>
    <unordered_map> <utility> <variant> <vector> <fmt/format.h>)
if(OMBRELUNE_PRECOMPILE)
    ombrelune_precompiled_headers(common_precompiled ${common_headers})
    if(OMBRELUNE_TESTS)
        find_package(GTest REQUIRED)
        ombrelune_precompiled_headers(tests_precompiled ${common_headers} <gtest/gtest.h> <nlohmann/json.hpp>)
        target_link_libraries(tests_precompiled PRIVATE GTest::gtest)
    endif()
endif()

# Lets targets use the headers of common_precompiled or tests_precompiled.
function(ombrelune_use_precompiled headers)
    if(OMBRELUNE_PRECOMPILE)
        foreach(target ${ARGN})
            target_precompile_headers(${target} REUSE_FROM ${headers})
        endforeach()
    endif()
endfunction()
