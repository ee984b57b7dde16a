# The libraries that tests and measurements stand on; included headers are written from this folder.
foreach(support sandbox world)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/${support}/*.cpp)
  add_library(kestrova_test_${support} STATIC EXCLUDE_FROM_ALL ${sources})
  target_include_directories(kestrova_test_${support} PUBLIC ${CMAKE_CURRENT_LIST_DIR})
endforeach()
# It writes packages of a million files.
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/world/zip_builder.cpp PROPERTIES
  COMPILE_OPTIONS "${KESTROVA_BUSY_OPTIONS}" SKIP_UNITY_BUILD_INCLUSION ON
  SKIP_PRECOMPILE_HEADERS ON)
target_link_libraries(kestrova_test_sandbox PUBLIC kestrova_core GTest::gmock)
target_link_libraries(kestrova_test_world PUBLIC kestrova_test_sandbox kestrova_app kestrova_library)
