# Functions that the folders' CMakeLists share.
include_guard()

# Makes the text of FILE available to TARGET as the function std::string_view SYMBOL().
function(corvana_embed TARGET FILE SYMBOL)
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${FILE})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} CONTENT)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/${SYMBOL}.cpp)
  set(NAME ${SYMBOL})
  configure_file(${CMAKE_SOURCE_DIR}/cmake/Embedded.cpp.in ${generated} @ONLY)
  target_sources(${TARGET} PRIVATE ${generated})
endfunction()

find_package(GTest REQUIRED)

# The tests of a folder: one program, run once for each of its files, which are named as their cases
# are. Those without Qt use GoogleTest:
#   corvana_tests(store_tests LIBS store TESTS sets/RecordSetTest fitness/CalculatorTest
#                 [SOURCES more.cpp] [TIMEOUT seconds])
function(corvana_tests PROGRAM)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LIBS;SOURCES;TESTS" ${ARGN})
  _corvana_test_program(${PROGRAM} ${ARGN})
  target_link_libraries(${PROGRAM} PRIVATE GTest::gtest GTest::gtest_main)
  target_precompile_headers(${PROGRAM} REUSE_FROM corvana_test_pch)
  foreach(test IN LISTS ARG_TESTS)
    get_filename_component(name ${test} NAME)
    _corvana_register(${name} "${ARG_TIMEOUT}" ${PROGRAM} --gtest_filter=${name}.*)
    # A file whose cases have another name would be passed over in silence.
    set_property(TEST ${name} PROPERTY FAIL_REGULAR_EXPRESSION "Running 0 tests")
  endforeach()
endfunction()

# Those of windows use QtTest, off screen; see tests/QtTests.h.
function(corvana_ui_tests PROGRAM)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LIBS;SOURCES;TESTS" ${ARGN})
  _corvana_test_program(${PROGRAM} ${ARGN})
  target_sources(${PROGRAM} PRIVATE ${CMAKE_SOURCE_DIR}/tests/QtTests.cpp)
  _corvana_with_qt(${PROGRAM})
  foreach(test IN LISTS ARG_TESTS)
    _corvana_register(${test} "${ARG_TIMEOUT}" ${PROGRAM} ${test})
    set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endforeach()
endfunction()

# A test of windows whose main function is its own.
#   corvana_ui_test(CorvanaAppTest LIBS corvana_app)
function(corvana_ui_test NAME)
  _corvana_test_program(${NAME} TESTS ${NAME} ${ARGN})
  _corvana_with_qt(${NAME})
  _corvana_register(${NAME} "" ${NAME})
  set_property(TEST ${NAME} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

function(_corvana_test_program PROGRAM)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LIBS;SOURCES;TESTS" ${ARGN})
  list(TRANSFORM ARG_TESTS APPEND .cpp)
  add_executable(${PROGRAM} ${ARG_TESTS} ${ARG_SOURCES})
  target_link_libraries(${PROGRAM} PRIVATE corvana_options ${ARG_LIBS})
endfunction()

function(_corvana_with_qt PROGRAM)
  set_target_properties(${PROGRAM} PROPERTIES AUTOMOC ON)
  target_link_libraries(${PROGRAM} PRIVATE Qt6::Test Qt6::PrintSupport)
  target_precompile_headers(${PROGRAM} REUSE_FROM platform_qt)
endfunction()

function(_corvana_register NAME TIMEOUT)
  if(NOT TIMEOUT)
    set(TIMEOUT 60)
  endif()
  add_test(NAME ${NAME} COMMAND ${ARGN})
  set_tests_properties(${NAME} PROPERTIES TIMEOUT ${TIMEOUT}
    ENVIRONMENT "LC_ALL=C.UTF-8;CORVANA_DATA=;ASAN_OPTIONS=detect_leaks=0")
endfunction()
