# What follows from the rows of the commands: the pages for man and the words for the shells.
find_program(GZIP gzip)
set(from_rows ${CMAKE_BINARY_DIR}/from_rows)
file(MAKE_DIRECTORY ${from_rows})
set(made)

# from_rows(NAME DESTINATION WHAT… [BEHIND file]): what `kestrovactl help WHAT…` prints, with that
# file behind it; a page for man is packed.
function(from_rows name destination)
  cmake_parse_arguments(R "" "BEHIND" "" ${ARGN})
  set(file ${from_rows}/${name})
  set(put_behind)
  if(R_BEHIND)
    set(put_behind COMMAND cat ${R_BEHIND} >> ${file})
  endif()
  set(result ${file})
  set(pack)
  if(GZIP AND name MATCHES "\\.1$")
    set(result ${file}.gz)
    set(pack COMMAND ${GZIP} -9nf ${file})
  endif()
  add_custom_command(OUTPUT ${result}
    COMMAND kestrovactl help ${R_UNPARSED_ARGUMENTS} > ${file} ${put_behind} ${pack}
    DEPENDS kestrovactl ${R_BEHIND} VERBATIM)
  install(FILES ${result} DESTINATION ${destination})
  set(made ${made} ${result} PARENT_SCOPE)
endfunction()

if(TARGET kestrovactl)
  set(packaging ${CMAKE_SOURCE_DIR}/packaging)
  set(man ${CMAKE_INSTALL_MANDIR}/man1)
  set(bash ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  from_rows(kestrovactl.1 ${man} --man)
  if(KESTROVA_WINDOWS)
    from_rows(kestrova.1 ${man} --man kestrova)
  endif()
  from_rows(kestrovactl ${bash} --completion bash BEHIND ${packaging}/completion.bash)
  install(CODE "file(CREATE_LINK kestrovactl
    \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${bash}/kestrova SYMBOLIC)")
  from_rows(_kestrovactl ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    --completion zsh BEHIND ${packaging}/completion.zsh)
  from_rows(kestrovactl.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    --completion fish BEHIND ${packaging}/completion.fish)
  add_custom_target(kestrova_from_rows ALL DEPENDS ${made})
endif()
if(GZIP)
  set(changes ${from_rows}/changelog.gz)
  add_custom_command(OUTPUT ${changes}
    COMMAND ${GZIP} -9nc ${CMAKE_SOURCE_DIR}/packaging/changelog > ${changes}
    DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog VERBATIM)
  add_custom_target(kestrova_changes ALL DEPENDS ${changes})
  install(FILES ${changes} DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()
