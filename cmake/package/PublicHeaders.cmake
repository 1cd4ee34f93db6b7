cmake_policy(VERSION 3.25)

# nx_public_headers(<source_dir> <variable>): the files that hosts include, from the root, such as core/time/nxDate.h:
# the umbrella, the opt-in headers, and everything that they include, tables too.
function(nx_public_headers source_dir variable)
  file(GLOB left RELATIVE "${source_dir}" "${source_dir}/core/integration/*.h")
  list(APPEND left core/core.h)
  set(reached ${left})
  while(left)
    list(POP_FRONT left header)
    file(STRINGS "${source_dir}/${header}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^[^\"]*\"([^\"]+)\".*" "\\1" include "${line}")
      if(NOT include IN_LIST reached)
        list(APPEND reached "${include}")
        list(APPEND left "${include}")
      endif()
    endforeach()
  endwhile()
  list(SORT reached)
  set(${variable}
      ${reached}
      PARENT_SCOPE)
endfunction()
