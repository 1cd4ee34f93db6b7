# What `cmake --install` puts in place, and in which package each part goes.
#
# Components, each a package of its own (NxPackages.cmake): runtime (the shared library and what debuggers need of it),
# development (headers, static library, what build systems ask), tools (the companion).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/nxcore)

if(BUILD_SHARED_LIBS)
  set(kinds nxcore nxcore-static)
else()
  set(kinds nxcore nxcore-shared)
endif()
install(
  TARGETS ${kinds}
  EXPORT nxcoreTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          COMPONENT runtime
          NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

# Packages bring no debug information; CPack takes it out of the shared library.
install(
  CODE "if(${NX_BELOW_SYSTEM_PREFIX})
  execute_process(
    COMMAND \"${CMAKE_STRIP}\" --strip-debug \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/libnxcore.a\"
    COMMAND_ERROR_IS_FATAL ANY)
endif()"
  COMPONENT development)

install(
  EXPORT nxcoreTargets
  NAMESPACE nx::
  DESTINATION ${package_dir}
  COMPONENT development)
configure_package_config_file(cmake/package/nxcoreConfig.cmake.in ${PROJECT_BINARY_DIR}/package/nxcoreConfig.cmake
                              INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/nxcoreConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/package/nxcoreConfig.cmake ${PROJECT_BINARY_DIR}/package/nxcoreConfigVersion.cmake
  DESTINATION ${package_dir}
  COMPONENT development)

# The file finds its prefix from where it lies itself, so that an install can be moved.
file(RELATIVE_PATH prefix_from_pc /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(cmake/package/nxcore.pc.in ${PROJECT_BINARY_DIR}/package/nxcore.pc @ONLY)
install(
  FILES ${PROJECT_BINARY_DIR}/package/nxcore.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

# Which headers are public is read from their includes when installing, so that a new one is never forgotten.
install(
  CODE "set(source_dir \"${PROJECT_SOURCE_DIR}\")
set(include_dir \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}\")
include(\"${PROJECT_SOURCE_DIR}/cmake/package/InstallHeaders.cmake\")"
  COMPONENT development)

if(NX_BUILD_TOOLS)
  include(NxInstallTools)
endif()
