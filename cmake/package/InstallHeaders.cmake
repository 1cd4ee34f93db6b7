# Installs the public headers: core/core.h, the opt-in headers of core/integration, and all that these include.
#
# Expects source_dir and include_dir; runs while installing.
include("${CMAKE_CURRENT_LIST_DIR}/PublicHeaders.cmake")
nx_public_headers("${source_dir}" headers)
foreach(header IN LISTS headers)
  get_filename_component(folder "${header}" DIRECTORY)
  file(
    INSTALL
    DESTINATION "${include_dir}/${folder}"
    TYPE FILE
    FILES "${source_dir}/${header}")
endforeach()
