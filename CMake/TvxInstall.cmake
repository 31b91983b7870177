# SPDX-License-Identifier: MIT
# Where things are installed. There are two components: the runtime, for who uses programs with modules, and the
# development, for who writes them.
include(GNUInstallDirs)

set(TVX_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/TVXGenericPlugins)
set(TVX_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/TVXGenericPlugins)
set(TVX_INSTALL_MODULEDIR ${CMAKE_INSTALL_LIBDIR}/tvx)
set(TVX_INSTALL_DOCDIR ${CMAKE_INSTALL_DATADIR}/doc/tvx-generic-plugins)

# An installed tree may lie anywhere, so its programs find its modules from where they are.
file(RELATIVE_PATH TVX_MODULES_FROM_PROGRAM /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${TVX_INSTALL_MODULEDIR})

# What is behind the host library's interface: nothing that users see includes it, and it may change.
set(TVX_INNER_HEADERS AppendingFile AsciiCase DocumentText DocumentTree ElfDocument ElfSymbols ElfTable ExportProxy HandlerGuard KeySpelling
    LibManagerFace ModuleFormat OperationName PngRun StrictJson TraceLog "Traced*")

# The headers of folders of this project.
function(tvx_install_headers)
    list(TRANSFORM TVX_INNER_HEADERS REPLACE "(.+)" "PATTERN;\\1.h;EXCLUDE" OUTPUT_VARIABLE inner)
    foreach(folder ${ARGN})
        install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${TVX_INSTALL_INCLUDEDIR}/${folder}
            COMPONENT development FILES_MATCHING PATTERN "*.h"
            PATTERN "JsonSerializer" EXCLUDE
            PATTERN "Linux" EXCLUDE
            ${inner})
    endforeach()
endfunction()

# Libraries as the package's targets, without the prefix that keeps names apart in here.
function(tvx_install_libraries)
    foreach(target ${ARGN})
        string(REGEX REPLACE "^TVX" "" name ${target})
        set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    endforeach()
    install(TARGETS ${ARGN} EXPORT TVXGenericPluginsTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endfunction()

function(tvx_install_modules)
    install(TARGETS ${ARGN} LIBRARY DESTINATION ${TVX_INSTALL_MODULEDIR} COMPONENT runtime)
endfunction()
