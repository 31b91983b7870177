# SPDX-License-Identifier: MIT
# How modules are built, here and by whoever uses the installed package.
include_guard()

# The source that carries a module's configuration document byte for byte, into the variable named out: on Linux the section
# .plugcfg, and the project's version and a comment on the build in .plugbuild; on Windows the resource PLUGCFG.
function(tvx_embed_document name document out)
    cmake_path(ABSOLUTE_PATH document)
    set(buildComment "${CMAKE_BUILD_TYPE} build with ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
    if(NOT EXISTS ${document})
        message(FATAL_ERROR "${name}: there is no configuration document ${document}")
    endif()
    set(form cpp)
    if(WIN32)
        set(form rc)
    endif()
    set(embedding ${CMAKE_CURRENT_BINARY_DIR}/${name}.plugcfg.${form})
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/PluginDocument.${form}.in ${embedding} @ONLY)
    set_source_files_properties(${embedding} PROPERTIES OBJECT_DEPENDS ${document})
    set(${out} ${embedding} PARENT_SCOPE)
endfunction()

# tvx_add_module(NAME SOURCES file… [LIBRARIES target…] DOCUMENT file.xml)
#
# Makes NAME.tvxlib: a module that a host loads at run time, with the configuration document embedded. GetExport is its only
# symbol, and nothing in it keeps it from being unloaded.
function(tvx_add_module name)
    cmake_parse_arguments(PARSE_ARGV 1 MODULE "" "DOCUMENT" "SOURCES;LIBRARIES")
    if(MODULE_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "${name}: unknown arguments: ${MODULE_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT MODULE_SOURCES OR NOT MODULE_DOCUMENT)
        message(FATAL_ERROR "${name}: a module needs SOURCES and a DOCUMENT")
    endif()
    tvx_embed_document(${name} ${MODULE_DOCUMENT} embedding)

    add_library(${name} MODULE ${MODULE_SOURCES} ${embedding})
    target_link_libraries(${name} PRIVATE TVX::Helpers ${MODULE_LIBRARIES})
    set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ".tvxlib"
        CXX_VISIBILITY_PRESET hidden C_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    if(WIN32)
        return()
    endif()
    # Static members of templates are weak symbols of default visibility, and unique ones, which would keep the file mapped for
    # good: only the version script hides them.
    set(symbols ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/GetExport.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${symbols})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${symbols})
    # A missing function is to be found here, not by the host. The sanitizers' own are found in the program that loads.
    string(TOUPPER "${CMAKE_BUILD_TYPE}" configuration)
    get_target_property(options ${name} COMPILE_OPTIONS)
    if(NOT "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${configuration}} ${options}" MATCHES "-fsanitize=")
        target_link_options(${name} PRIVATE LINKER:-z,defs)
    endif()
endfunction()

# tvx_add_plugin(NAME SOURCES file… [LIBRARIES target…] DOCUMENT file.xml)
#
# tvx_add_module with two checks. The build fails when the module's document cannot be read or is not what it has to be; no
# code of the module runs for that. And CTest is told of NAME.GivesEveryExportOfItsDocument, which loads the module and asks
# it for each export that its document names.
function(tvx_add_plugin name)
    tvx_add_module(${name} ${ARGN})
    # A system that is built for on another one cannot be asked to run the command; and this project can be built without it.
    if(NOT TARGET TVX::tvx OR (CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR))
        return()
    endif()
    add_custom_command(TARGET ${name} POST_BUILD
        COMMAND TVX::tvx info --quiet $<TARGET_FILE:${name}>
        COMMENT "Checking the configuration document of ${name}" VERBATIM)
    add_test(NAME ${name}.GivesEveryExportOfItsDocument COMMAND TVX::tvx probe $<TARGET_FILE:${name}>)
endfunction()
