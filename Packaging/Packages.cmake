# SPDX-License-Identifier: MIT
# Debian packages, one a component: cpack makes them in the folder packages/ of the build.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGE_VENDOR "TVX Generic Plugins")
set(CPACK_PACKAGE_CONTACT "TVX Generic Plugins maintainers <maintainers@talvere.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Building blocks for plug-ins of the TVX framework")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Whatever the builder keeps from others in files of their own.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE OFF)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME tvx-generic-plugins)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The modules TVXGenericPlugins and TVXJsonSerializer, and the command tvx that works with modules.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME tvx-generic-plugins-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "tvx-generic-plugins (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libfmt-dev, libpng-dev, libpugixml-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake (>= 3.25), pkg-config")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, host library, CMake package and pkg-config files, examples and guides for authors of plug-ins and hosts.")

foreach(package tvx-generic-plugins tvx-generic-plugins-dev)
    string(REPLACE "tvx-generic-plugins-dev" development component ${package})
    string(REPLACE "tvx-generic-plugins" runtime component ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
    install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endforeach()
include(CPack)
