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
