# editor_module(NAME SOURCES ... HEADERS ... DEPS ... PRIVATE_DEPS ...)
#
# One folder, one static library, one namespace. HEADERS are the public ones: each must compile on
# its own (NAME_verify_interface_header_sets). DEPS are what the headers need, PRIVATE_DEPS what
# only the sources need. tools/check_layers verifies that includes agree with the levels.
function(editor_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;HEADERS;DEPS;PRIVATE_DEPS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_SOURCE_DIR}" FILES ${arg_HEADERS})
  target_link_libraries(${name} PUBLIC ${arg_DEPS} PRIVATE ${arg_PRIVATE_DEPS} quorvel_options)
  set_target_properties(${name} PROPERTIES
    LINKER_LANGUAGE CXX
    VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# editor_test(NAME SOURCES ... DEPS ... [GUI])
#
# One test executable for a module, each case a ctest entry of its own. GUI tests run on a headless
# screen: Qt's offscreen platform on Linux.
function(editor_test name)
  cmake_parse_arguments(arg "GUI" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_DEPS} GTest::gtest_main quorvel_options)
  set(properties TIMEOUT 120)
  if(arg_GUI)
    list(APPEND properties ENVIRONMENT
      "QT_QPA_PLATFORM=offscreen:configfile=${CMAKE_SOURCE_DIR}/tests/support/screens.json")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" PROPERTIES ${properties})
endfunction()
