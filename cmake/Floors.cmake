# A folder in one of the storeys of src/ is a floor, one static library. What its row names is what
# it includes; tests/checks/floors.py holds rows and includes against each other.

find_package(PkgConfig REQUIRED)
find_package(ICU 72 REQUIRED COMPONENTS uc)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(DEFLATE REQUIRED IMPORTED_TARGET libdeflate)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(SOXR REQUIRED IMPORTED_TARGET soxr)
pkg_check_modules(TURBOJPEG REQUIRED IMPORTED_TARGET libturbojpeg)
pkg_check_modules(JPEG REQUIRED IMPORTED_TARGET libjpeg)
pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET glib-2.0)
pkg_check_modules(UCHARDET REQUIRED IMPORTED_TARGET uchardet)
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)
pkg_check_modules(XXHASH REQUIRED IMPORTED_TARGET libxxhash)
pkg_check_modules(CURL REQUIRED IMPORTED_TARGET libcurl)
pkg_check_modules(GIO REQUIRED IMPORTED_TARGET gio-2.0)
# The common headers are read once for all floors; an option of a single one would keep them apart.
set_property(TARGET PkgConfig::GIO PROPERTY INTERFACE_COMPILE_OPTIONS "")

add_library(kestrova_options INTERFACE)
foreach(storey ground media engine keep work faces)
  target_include_directories(kestrova_options INTERFACE ${CMAKE_SOURCE_DIR}/src/${storey})
endforeach()
# g++ 12 sees overlaps in "~" + std::to_string(n) that are not there (its bug 105651), and where strings are
# moved bounds that the library keeps; where all is optimised also values that nobody reads.
target_compile_options(kestrova_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-missing-field-initializers
  $<$<BOOL:${KESTROVA_STRICT}>:-Werror>
  $<$<CXX_COMPILER_ID:GNU>:-Wcast-align=strict;-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds>
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-maybe-uninitialized>)
# Sources compiled as one see each other's names at the margin, which hide nothing in truth.
if(CMAKE_UNITY_BUILD)
  target_compile_options(kestrova_options INTERFACE
    -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local;-Wno-subobject-linkage>)
endif()

# A build whose tests are slow may optimise the floors that go through every file and every sample,
# and the source that reads and writes every note; of the others the compiler would take longer than
# it saves.
set(KESTROVA_BUSY_OPTIONS "" CACHE STRING "Compiler options of the floors that compute most")
set(KESTROVA_BUSY_FLOORS
  "^(ground/(platform|core)|media/(pictures|audio)|engine/packages|faces/practice)$")
set(KESTROVA_BUSY_SOURCES "/record_json\\.cpp$")

# In a build whose sources are compiled as one, all floors of these storeys are one source: the headers
# are read once, and what templates make is made once.
set(KESTROVA_JOINED_STOREYS "" CACHE STRING "Storeys whose floors are one library, kestrova_joined")

# link_first(TARGET WHAT): the objects stand before all others where WHAT is linked. Of functions that
# several sources make from one template the linker keeps the first, so the optimised ones.
function(link_first target what)
  target_link_options(${what} INTERFACE $<TARGET_OBJECTS:${target}>)
  set_property(TARGET ${what} APPEND PROPERTY
    INTERFACE_LINK_DEPENDS $<TARGET_OBJECTS:${target}>)
endfunction()

# The library's functions that all floors call, optimised too.
if(KESTROVA_BUSY_OPTIONS)
  add_library(kestrova_busy_library OBJECT ${CMAKE_SOURCE_DIR}/cmake/busy_library.cpp)
  target_compile_options(kestrova_busy_library PRIVATE ${KESTROVA_BUSY_OPTIONS})
  link_first(kestrova_busy_library kestrova_options)
endif()

# What nearly every source includes from outside, read once a build. No header of our own stands
# here: a change of one recompiles what includes it and nothing else. What is optimised reads it
# once more, since a compiler takes only what was read with its own options.
set(KESTROVA_COMMON_HEADERS
  <algorithm> <array> <atomic> <charconv> <chrono> <cstdint> <cstring> <filesystem> <functional>
  <map> <memory> <mutex> <optional> <set> <span> <string> <string_view> <unordered_map> <utility>
  <variant> <vector>)

# kestrova_floor(STOREY/NAME USES floor… LIBS target…): the sources of that folder as a library.
# A floor of headers alone, or one that is joined with others, passes on what it uses.
function(kestrova_floor place)
  cmake_parse_arguments(F "" "" "USES;LIBS" ${ARGN})
  get_filename_component(name ${place} NAME)
  get_filename_component(storey ${place} DIRECTORY)
  set_property(GLOBAL APPEND PROPERTY KESTROVA_FLOORS ${place})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${place}/*.cpp)
  list(TRANSFORM F_USES PREPEND kestrova_)
  get_property(joined GLOBAL PROPERTY KESTROVA_JOINED)
  set(uses ${F_USES})
  list(REMOVE_ITEM uses ${joined})
  if(NOT "${uses}" STREQUAL "${F_USES}")
    list(APPEND uses kestrova_joined)
  endif()
  set(busy OFF)
  if(KESTROVA_BUSY_OPTIONS AND place MATCHES "${KESTROVA_BUSY_FLOORS}")
    set(busy ON)
  endif()
  set(library kestrova_${name})
  if(sources AND storey IN_LIST KESTROVA_JOINED_STOREYS AND NOT busy)
    set(library kestrova_joined)
    add_library(kestrova_${name} INTERFACE)
    target_link_libraries(kestrova_${name} INTERFACE kestrova_joined)
    set_property(GLOBAL APPEND PROPERTY KESTROVA_JOINED kestrova_${name})
    list(REMOVE_ITEM uses kestrova_joined)
  elseif(NOT sources)
    add_library(kestrova_${name} INTERFACE)
    target_link_libraries(kestrova_${name} INTERFACE kestrova_options ${uses} ${F_LIBS})
    return()
  endif()
  if(NOT TARGET ${library})
    add_library(${library} STATIC)
    if(busy)
      target_compile_options(${library} PRIVATE ${KESTROVA_BUSY_OPTIONS})
    elseif(name STREQUAL "words")
      target_precompile_headers(kestrova_words PRIVATE ${KESTROVA_COMMON_HEADERS})
    else()
      target_precompile_headers(${library} REUSE_FROM kestrova_words)
    endif()
  endif()
  if(KESTROVA_BUSY_OPTIONS)
    set(busy_sources ${sources})
    list(FILTER busy_sources INCLUDE REGEX "${KESTROVA_BUSY_SOURCES}")
    list(FILTER sources EXCLUDE REGEX "${KESTROVA_BUSY_SOURCES}")
    if(busy_sources)
      add_library(kestrova_busy_${name} OBJECT ${busy_sources})
      target_include_directories(kestrova_busy_${name} PRIVATE
        $<TARGET_PROPERTY:kestrova_options,INTERFACE_INCLUDE_DIRECTORIES>)
      target_compile_options(kestrova_busy_${name} PRIVATE ${KESTROVA_BUSY_OPTIONS}
        $<TARGET_PROPERTY:kestrova_options,INTERFACE_COMPILE_OPTIONS>)
      link_first(kestrova_busy_${name} ${library})
    endif()
  endif()
  target_sources(${library} PRIVATE ${sources})
  target_link_libraries(${library} PUBLIC kestrova_options ${uses} ${F_LIBS})
endfunction()
