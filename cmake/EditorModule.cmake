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

# program_properties(NAME DESCRIPTION)
#
# What Windows shows as the properties of a program that is shipped.
function(program_properties name description)
  if(WIN32)
    set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}-version.rc")
    configure_file("${CMAKE_SOURCE_DIR}/platform/win32/version.rc.in" "${file}" @ONLY)
    target_sources(${name} PRIVATE "${file}")
  endif()
endfunction()

# The source folder as test programs see it: under Wine this machine's root is a drive.
set(QUORVEL_SOURCE_FOLDER "${CMAKE_SOURCE_DIR}")
set(QUORVEL_DATA_FOLDER "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
if(CMAKE_CROSSCOMPILING)
  set(QUORVEL_SOURCE_FOLDER "Z:${CMAKE_SOURCE_DIR}")
  set(QUORVEL_DATA_FOLDER "Z:${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()

# editor_test(NAME SOURCES ... DEPS ... [GUI [SCREENS FILE]])
#
# One test executable for a module, each case a ctest entry of its own. GUI tests run on a headless
# screen: on Linux Qt's offscreen platform, a screen for each test, which FILE of tests/support
# describes, and no bus to the desktop; on Windows the one display, whose pointer and active window
# they would take from one another, so one at a time.
function(editor_test name)
  cmake_parse_arguments(arg "GUI" "SCREENS" "SOURCES;DEPS" ${ARGN})
  if(NOT arg_SCREENS)
    set(arg_SCREENS screens.json)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_DEPS} GTest::gtest_main quorvel_options)
  set(properties TIMEOUT 120)
  if(arg_GUI)
    list(APPEND properties ENVIRONMENT
      "QT_QPA_PLATFORM=offscreen:configfile=${CMAKE_SOURCE_DIR}/tests/support/${arg_SCREENS}"
      ENVIRONMENT_MODIFICATION DBUS_SESSION_BUS_ADDRESS=set:disabled:)
    if(WIN32)
      list(APPEND properties RESOURCE_LOCK display)
    endif()
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" PROPERTIES ${properties})
endfunction()

# editor_fuzz(NAME SOURCES ... DEPS ...)
#
# One libFuzzer target, fuzz_NAME, with the corpus tests/fuzz/corpus/NAME. Without libFuzzer the same
# source is linked to a main that feeds it the corpus, and is a test: what a kept input once broke stays fixed.
# DEFINITIONS are for this target alone.
function(editor_fuzz name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPS;DEFINITIONS" ${ARGN})
  set(target fuzz_${name})
  add_executable(${target} ${arg_SOURCES})
  target_compile_definitions(${target} PRIVATE ${arg_DEFINITIONS})
  target_link_libraries(${target} PRIVATE ${arg_DEPS} platform quorvel_options)
  if(QUORVEL_FUZZ)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzz_targets ${target})
  else()
    target_sources(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests/fuzz/ReplayMain.cpp")
    add_test(NAME fuzz.${name}
      COMMAND ${target} "${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${name}"
      WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
    set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
endfunction()
