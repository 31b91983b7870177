# SPDX-License-Identifier: MIT

# tvx_add_module(NAME SOURCES file… LIBRARIES target… DOCUMENT file.xml)
#
# Makes NAME.tvxlib: a module that a host loads at run time, with the configuration document embedded byte for byte in
# its section .plugcfg and the project's version and a comment on the build in .plugbuild. GetExport is its only symbol,
# and nothing in it keeps it from being unloaded.
function(tvx_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 MODULE "" "DOCUMENT" "SOURCES;LIBRARIES")
    cmake_path(ABSOLUTE_PATH MODULE_DOCUMENT OUTPUT_VARIABLE document)
    set(buildComment "${CMAKE_BUILD_TYPE} build with ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
    set(embedding ${CMAKE_CURRENT_BINARY_DIR}/${name}.plugcfg.S)
    configure_file(${PROJECT_SOURCE_DIR}/CMake/PluginDocument.S.in ${embedding} @ONLY)
    set_source_files_properties(${embedding} PROPERTIES OBJECT_DEPENDS ${document})

    add_library(${name} MODULE ${MODULE_SOURCES} ${embedding})
    target_link_libraries(${name} PRIVATE ${MODULE_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ".tvxlib"
        LINK_DEPENDS ${PROJECT_SOURCE_DIR}/CMake/GetExport.map)
    # The standard library's templates are weak symbols of default visibility: only the version script hides them.
    target_link_options(${name} PRIVATE
        LINKER:--version-script=${PROJECT_SOURCE_DIR}/CMake/GetExport.map LINKER:-z,defs)
    if(TVX_SANITIZE)
        # The sanitizers' own functions are found in the program that loads the module.
        target_link_options(${name} PRIVATE LINKER:-z,undefs)
    endif()
endfunction()
