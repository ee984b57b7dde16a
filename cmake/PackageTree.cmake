# Run by cpack over the tree that becomes the package: what only a package has, and programs without
# what nobody needs to run them.
set(tree ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
file(MAKE_DIRECTORY ${tree}/share/lintian/overrides)
configure_file(${CMAKE_CURRENT_LIST_DIR}/../packaging/lintian-overrides
  ${tree}/share/lintian/overrides/kestrova COPYONLY)
file(RENAME ${tree}/share/zsh/site-functions ${tree}/share/zsh/vendor-completions)
find_program(STRIP strip REQUIRED)
file(GLOB programs ${tree}/bin/* ${tree}/libexec/kestrova/*)
execute_process(COMMAND ${STRIP} --strip-unneeded --remove-section=.comment --remove-section=.note
  ${programs} COMMAND_ERROR_IS_FATAL ANY)
