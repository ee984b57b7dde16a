# The texts in other languages: each po/LANGUAGE.po is compiled to where the programs look for it, and
# installed. Without gettext the programs speak English alone.
find_program(MSGFMT msgfmt)
file(GLOB catalogues CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/po/*.po)
set(compiled)
if(NOT MSGFMT)
  message(WARNING "Without msgfmt (package gettext) there is no language but English.")
  set(catalogues)
endif()
foreach(catalogue IN LISTS catalogues)
  get_filename_component(language ${catalogue} NAME_WLE)
  set(place ${CMAKE_BINARY_DIR}/src/share/locale/${language}/LC_MESSAGES)
  file(MAKE_DIRECTORY ${place})
  add_custom_command(OUTPUT ${place}/kestrova.mo
    COMMAND ${MSGFMT} --check --output-file=${place}/kestrova.mo ${catalogue}
    DEPENDS ${catalogue} VERBATIM)
  list(APPEND compiled ${place}/kestrova.mo)
  install(FILES ${place}/kestrova.mo
    DESTINATION ${CMAKE_INSTALL_LOCALEDIR}/${language}/LC_MESSAGES)
endforeach()
add_custom_target(kestrova_catalogues ALL DEPENDS ${compiled})
foreach(user kestrova_app kestrova_ui)
  if(TARGET ${user})
    add_dependencies(${user} kestrova_catalogues)
  endif()
endforeach()
