# Where the programs go, and the Debian package (`./dev deb`).
set(programs)
foreach(program kestrova kestrovactl kestrova-practice-game kestrova-practice-tom2pc
    kestrova-practice-script kestrova-practice-setup)
  if(TARGET ${program})
    list(APPEND programs ${program})
  endif()
endforeach()
if(programs)
  install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(KESTROVA_WINDOWS)
  install(FILES packaging/kestrova.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
endif()
install(FILES packaging/kestrova.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/application-x-kestrova-archive.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)
install(FILES packaging/kestrova-mime.xml RENAME kestrova.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
set(resources packaging/kestrova.svg share/help_kestrova.txt packaging/kestrova-mime.xml
  packaging/brivanta-mime.xml packaging/application-x-kestrova-archive.svg)
install(FILES ${resources} DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrova)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The terminal's page for man and its words for bash, from the rows of the commands.
if(TARGET kestrovactl)
  set(from_rows ${CMAKE_BINARY_DIR}/from_rows)
  set(completion ${CMAKE_SOURCE_DIR}/packaging/completion.bash)
  add_custom_command(OUTPUT ${from_rows}/kestrovactl.1 ${from_rows}/kestrovactl
    COMMAND ${CMAKE_COMMAND} -E make_directory ${from_rows}
    COMMAND kestrovactl help --man > ${from_rows}/kestrovactl.1
    COMMAND kestrovactl help --completion > ${from_rows}/tables
    COMMAND cat ${from_rows}/tables ${completion} > ${from_rows}/kestrovactl
    DEPENDS kestrovactl ${completion} VERBATIM)
  add_custom_target(kestrova_from_rows ALL DEPENDS ${from_rows}/kestrovactl.1)
  install(FILES ${from_rows}/kestrovactl.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${from_rows}/kestrovactl
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endif()

# The same folder beside the programs of a build, which nobody installed.
foreach(resource ${resources})
  get_filename_component(name ${resource} NAME)
  configure_file(${resource} ${CMAKE_BINARY_DIR}/src/share/kestrova/${name} COPYONLY)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrova)
set(CPACK_PACKAGE_CONTACT "The Kestrova developers <kestrova@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Archive of custom Tomb Raider levels, played one at a time")
set(CPACK_PACKAGE_DESCRIPTION
"Keeps hundreds of custom levels in an archive and swaps the chosen one into the Level
Editor's folder: its files, its savegames and its pictures come in, the level before goes
out, and the Level Editor's own files come back whenever they are wanted.

The windows are the program kestrova; kestrovactl does the same from a terminal.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, xdg-utils, zip, unzip, libarchive-tools")
# The game and the Level Editor's programs are for another system.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "wine, qt6-gtk-platformtheme, shared-mime-info, desktop-file-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
include(CPack)
