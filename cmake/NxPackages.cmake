# The Debian packages: `cpack --config build/release/CPackConfig.cmake -B <folder>`.
#
# libnxcore1.37 can be installed beside another minor version, so nothing in it has a name without the version.
set(NX_PACKAGE_CONTACT
    "The core maintainers <core-maintainers@korvane.example>"
    CACHE STRING "Who answers for the packages, as a name and an address")

set(soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(package_runtime libnxcore${soversion})
set(package_development libnxcore-dev)
set(package_tools nxcore-tools)

# What policy wants of every package: whose it is, and what changed.
configure_file(cmake/package/debian-copyright.in ${PROJECT_BINARY_DIR}/package/copyright @ONLY)
configure_file(cmake/package/debian-changelog.in ${PROJECT_BINARY_DIR}/package/changelog @ONLY)
configure_file(CHANGELOG.md ${PROJECT_BINARY_DIR}/package/CHANGELOG.md COPYONLY)
execute_process(COMMAND gzip -9nfk ${PROJECT_BINARY_DIR}/package/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component runtime development tools)
  install(
    FILES ${PROJECT_BINARY_DIR}/package/copyright ${PROJECT_BINARY_DIR}/package/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_${component}}
    COMPONENT ${component}
    EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# What debuggers need of the library goes into libnxcore1.37-dbgsym, and the library is stripped then. Were all files
# stripped before, nothing would be left for it.
set(CPACK_STRIP_FILES OFF)
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ
    OWNER_WRITE
    OWNER_EXECUTE
    GROUP_READ
    GROUP_EXECUTE
    WORLD_READ
    WORLD_EXECUTE)

set(CPACK_PACKAGE_NAME nxcore)
set(CPACK_PACKAGE_CONTACT "${NX_PACKAGE_CONTACT}")
# Each package has a description of its own; a summary other than this one would be put in front of them.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/core)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${package_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/package/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "foundation library of an electronic-trading platform\nVocabulary of the trade, decimals and money, tick ladders and text forms of\nprices, calendar, log, threads and sockets, as one shared library."
)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${package_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "foundation library of an electronic-trading platform (development)\nHeaders, the static library, and what CMake and pkg-config need to find\nthem."
)

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${package_tools})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
    "companion program of the electronic-trading platform's library\nReads prices, steps along tick ladders, looks up numbers and tokens of the\nvocabulary, lists configuration keys, and checks a host."
)
include(CPack)
