# Compiles through ccache where it is present; set NX_CCACHE to OFF to do without.
option(NX_CCACHE "Compile through ccache where it is present" ${PROJECT_IS_TOP_LEVEL})
find_program(NX_CCACHE_PROGRAM ccache)
if(NX_CCACHE AND NX_CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND};-E;env;CCACHE_BASEDIR=${PROJECT_SOURCE_DIR};CCACHE_NOHASHDIR=1;${NX_CCACHE_PROGRAM}")
endif()
