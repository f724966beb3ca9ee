# Sources are found by folder: a new tool is a new file, never an edit here.
function(ombrelune_sources result folder)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    set(${result} ${found} PARENT_SCOPE)
endfunction()

# ombrelune_core gathers what the plug-in, the tests and the benches link.
add_library(ombrelune_core INTERFACE)

function(ombrelune_library name folder)
    ombrelune_sources(sources ${folder})
    add_library(ombrelune_${name} STATIC ${sources})
    ombrelune_use_precompiled(common_precompiled ombrelune_${name})
    target_link_libraries(ombrelune_${name} PUBLIC ${ARGN})
    target_link_libraries(ombrelune_core INTERFACE ombrelune_${name})
endfunction()

# Nothing calls a tool's object file, so tool libraries are linked whole or a linker would drop their registrations.
function(ombrelune_tools folder)
    string(REPLACE "/" "_" name ${folder})
    ombrelune_sources(sources tools/${folder})
    add_library(ombrelune_tools_${name} STATIC ${sources})
    ombrelune_use_precompiled(common_precompiled ombrelune_tools_${name})
    target_link_libraries(ombrelune_tools_${name} PUBLIC ombrelune_framework ${ARGN})
    target_link_libraries(ombrelune_core INTERFACE
        $<LINK_LIBRARY:WHOLE_ARCHIVE,ombrelune_tools_${name}>)
endfunction()
