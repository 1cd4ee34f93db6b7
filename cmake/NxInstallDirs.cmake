# Where things are installed below the prefix.
#
# On Debian libraries lie in lib/<architecture> whatever the prefix, so that one build serves `cmake --install` and the
# .deb packages; ldconfig, pkg-config and CMake look there below /usr/local too.
if(EXISTS /etc/debian_version
   AND CMAKE_LIBRARY_ARCHITECTURE
   AND NOT DEFINED CMAKE_INSTALL_LIBDIR)
  set(CMAKE_INSTALL_LIBDIR
      lib/${CMAKE_LIBRARY_ARCHITECTURE}
      CACHE PATH "Libraries, below the prefix")
endif()
include(GNUInstallDirs)

# True when files are installed below the system's own prefix, by `cmake --install` or by CPack into what becomes a
# package; other prefixes, however they end, are folders that may be moved. For code that runs when installing.
set(NX_BELOW_SYSTEM_PREFIX "CMAKE_INSTALL_PREFIX MATCHES \"^/usr\$|/_CPack_Packages/.*/usr\$\"")
