# The API reference: cmake --build build/release --target docs, into docs/html of the build. Any warning fails it.
find_package(Doxygen)
set(NX_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
configure_file(docs/Doxyfile.in ${NX_DOCS_DIR}/Doxyfile @ONLY)
if(DOXYGEN_FOUND)
  add_custom_target(
    docs
    COMMAND Doxygen::doxygen ${NX_DOCS_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "The API reference in ${NX_DOCS_DIR}/html")
else()
  add_custom_target(docs COMMAND ${CMAKE_COMMAND} -E echo "The API reference is made by Doxygen: install it" COMMAND
                                 ${CMAKE_COMMAND} -E false)
endif()

if(NX_BUILD_TESTS)
  if(DOXYGEN_FOUND)
    add_test(
      NAME docs.api
      COMMAND Doxygen::doxygen ${NX_DOCS_DIR}/Doxyfile
      WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  else()
    add_test(NAME docs.api COMMAND ${CMAKE_COMMAND} -E echo "skipped: Doxygen is not installed")
  endif()
  set_tests_properties(docs.api PROPERTIES SKIP_REGULAR_EXPRESSION "skipped: " TIMEOUT 300)
endif()
