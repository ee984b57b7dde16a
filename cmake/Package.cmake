# The Debian package (`./dev deb`). What it needs beside the libraries that are linked stands in
# packaging/packages.txt.

# packages_of(SECTION result): the rows of that section.
function(packages_of section result)
  file(STRINGS ${CMAKE_SOURCE_DIR}/packaging/packages.txt lines REGEX "^[^#]")
  set(found)
  set(here FALSE)
  foreach(line IN LISTS lines)
    if(line MATCHES "^\\[([a-z]+)\\]$")
      string(COMPARE EQUAL "${CMAKE_MATCH_1}" "${section}" here)
    elseif(here)
      list(APPEND found ${line})
    endif()
  endforeach()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

packages_of(depends depends)
packages_of(run recommends)
packages_of(desktop desktop)
packages_of(suggests suggests)
# Libraries that are linked are found by what they give; those of `depends` are loaded by name.
list(FILTER recommends EXCLUDE REGEX "^lib")
list(REMOVE_ITEM recommends ${depends})
list(APPEND recommends ${desktop})
list(REMOVE_DUPLICATES recommends)
list(JOIN depends ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
list(JOIN recommends ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
list(JOIN suggests ", " CPACK_DEBIAN_PACKAGE_SUGGESTS)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrova)
set(CPACK_PACKAGE_CONTACT "The Kestrova developers <developers@kestrova.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "archive of custom Tomb Raider levels, played one at a time")
set(CPACK_PACKAGE_DESCRIPTION
"Keeps hundreds of custom levels in an archive and swaps the chosen one into
the Level Editor's folder: its files, its savegames and its pictures come in,
the level before goes out, and the Level Editor's own files come back whenever
they are wanted.

The windows are the program kestrova; kestrovactl does the same from a
terminal. The game and the Level Editor are not part of the package.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/PackageTree.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
