# The companion, and what it writes itself: the manual page and the completion of the shells.
set(made ${PROJECT_BINARY_DIR}/package)
find_program(NX_GZIP gzip REQUIRED)

add_custom_command(
  OUTPUT ${made}/nxcore.1.gz
  COMMAND nxcore-tool manual > ${made}/nxcore.1
  COMMAND ${NX_GZIP} -9nf ${made}/nxcore.1
  DEPENDS nxcore-tool
  COMMENT "Writing nxcore(1)"
  VERBATIM)
set(made_files ${made}/nxcore.1.gz)
foreach(shell bash fish zsh)
  add_custom_command(
    OUTPUT ${made}/completion.${shell}
    COMMAND nxcore-tool completion ${shell} > ${made}/completion.${shell}
    DEPENDS nxcore-tool
    COMMENT "Writing the completion of ${shell}"
    VERBATIM)
  list(APPEND made_files ${made}/completion.${shell})
endforeach()

# GDB looks for the script of a library under the library's real name, beside it.
set(debugger_script libnxcore.so.${PROJECT_VERSION}-gdb.py)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/core/${debugger_script}
  COMMAND nxcore-tool list -search "" -json > ${made}/words.json
  COMMAND
    ${CMAKE_COMMAND} -DWORDS=${made}/words.json -DTEMPLATE=${PROJECT_SOURCE_DIR}/tools/gdb/nxcore-gdb.py.in
    -DOUTPUT=${PROJECT_BINARY_DIR}/core/${debugger_script} -P ${PROJECT_SOURCE_DIR}/tools/gdb/WriteScript.cmake
  DEPENDS nxcore-tool ${PROJECT_SOURCE_DIR}/tools/gdb/nxcore-gdb.py.in ${PROJECT_SOURCE_DIR}/tools/gdb/WriteScript.cmake
  COMMENT "Writing the debugger's script"
  VERBATIM)
list(APPEND made_files ${PROJECT_BINARY_DIR}/core/${debugger_script})
add_custom_target(nxcore-tool-texts ALL DEPENDS ${made_files})

# An installed companion finds the library beside it, wherever the prefix is moved to.
set_target_properties(nxcore-tool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
install(TARGETS nxcore-tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
# Below /usr the system's loader finds it, and packages have neither run paths nor symbols.
install(
  CODE "if(${NX_BELOW_SYSTEM_PREFIX})
  set(program \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/nxcore\")
  file(RPATH_REMOVE FILE \"\${program}\")
  execute_process(COMMAND \"${CMAKE_STRIP}\" \"\${program}\" COMMAND_ERROR_IS_FATAL ANY)
endif()"
  COMPONENT tools)

install(
  FILES ${made}/nxcore.1.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  COMPONENT tools)
install(
  FILES ${made}/completion.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
  RENAME nxcore
  COMPONENT tools)
install(
  FILES ${made}/completion.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
  RENAME nxcore.fish
  COMPONENT tools)
# Where zsh looks for what packages bring is Debian's choice; elsewhere it is zsh's own.
install(
  CODE "set(functions site-functions)
if(${NX_BELOW_SYSTEM_PREFIX})
  set(functions vendor-completions)
endif()
file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${functions}\"
     TYPE FILE RENAME _nxcore FILES \"${made}/completion.zsh\")"
  COMPONENT tools)

# Below /usr GDB trusts what lies in a folder of its own; elsewhere it has to be told to trust the library's folder.
install(
  CODE "set(folder \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}\")
if(${NX_BELOW_SYSTEM_PREFIX})
  set(folder \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR}\")
endif()
file(INSTALL DESTINATION \"\${folder}\" TYPE FILE FILES \"${PROJECT_BINARY_DIR}/core/${debugger_script}\")"
  COMPONENT runtime)
