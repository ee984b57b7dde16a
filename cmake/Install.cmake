# Where the programs go, with all that a desktop wants of them.
include(FromRows)

set(programs)
foreach(program kestrova kestrovactl)
  if(TARGET ${program})
    list(APPEND programs ${program})
  endif()
endforeach()
set(stand_ins)
foreach(stand_in game tom2pc script setup)
  if(TARGET kestrova-practice-${stand_in})
    list(APPEND stand_ins kestrova-practice-${stand_in})
  endif()
endforeach()
if(programs)
  install(TARGETS ${programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(stand_ins) # copied into practice folders, started by nobody
  install(TARGETS ${stand_ins} RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/kestrova)
endif()

if(KESTROVA_WINDOWS)
  install(FILES packaging/kestrova.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/org.kestrova.kestrova.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()
install(FILES packaging/kestrova-mime.xml RENAME kestrova.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
set(resources packaging/kestrova.svg share/help_kestrova.txt packaging/kestrova-mime.xml
  packaging/brivanta-mime.xml packaging/application-x-kestrova-archive.svg)
install(FILES ${resources} DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrova)
install(FILES README.md packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The drawings as they are, and at the sizes that menus and lists of files ask for.
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
find_program(RSVG_CONVERT rsvg-convert)
foreach(icon apps/kestrova mimetypes/application-x-kestrova-archive)
  get_filename_component(kind ${icon} DIRECTORY)
  get_filename_component(name ${icon} NAME)
  set(drawing ${CMAKE_SOURCE_DIR}/packaging/${name}.svg)
  install(FILES ${drawing} DESTINATION ${icons}/scalable/${kind})
  if(NOT RSVG_CONVERT)
    continue()
  endif()
  foreach(size 16 22 24 32 48 64 128 256 512)
    set(picture ${CMAKE_BINARY_DIR}/icons/${size}/${name}.png)
    add_custom_command(OUTPUT ${picture}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/icons/${size}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture} ${drawing}
      DEPENDS ${drawing} VERBATIM)
    list(APPEND pictures ${picture})
    install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/${kind})
  endforeach()
endforeach()
add_custom_target(kestrova_icons ALL DEPENDS ${pictures})

# The same folder beside the programs of a build, which nobody installed.
foreach(resource ${resources})
  get_filename_component(name ${resource} NAME)
  configure_file(${resource} ${CMAKE_BINARY_DIR}/src/share/kestrova/${name} COPYONLY)
endforeach()

include(Package)
