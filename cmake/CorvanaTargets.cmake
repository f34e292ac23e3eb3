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

# A test without Qt: GoogleTest over one source file named like the test.
#   corvana_test(sets/WorkoutSetTest LIBS store [SOURCES more.cpp])
function(corvana_test FILE)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LIBS;SOURCES" ${ARGN})
  get_filename_component(NAME ${FILE} NAME)
  add_executable(${NAME} ${FILE}.cpp ${ARG_SOURCES})
  target_link_libraries(${NAME} PRIVATE corvana_options ${ARG_LIBS} GTest::gtest GTest::gtest_main)
  target_precompile_headers(${NAME} REUSE_FROM corvana_test_pch)
  _corvana_register(${NAME} "${ARG_TIMEOUT}")
endfunction()

# A test of windows: QtTest, off screen.
function(corvana_ui_test NAME)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LIBS;SOURCES" ${ARGN})
  add_executable(${NAME} ${NAME}.cpp ${ARG_SOURCES})
  set_target_properties(${NAME} PROPERTIES AUTOMOC ON)
  target_link_libraries(${NAME} PRIVATE corvana_options ${ARG_LIBS} Qt6::Test Qt6::Widgets)
  target_precompile_headers(${NAME} REUSE_FROM platform_qt)
  _corvana_register(${NAME} "${ARG_TIMEOUT}")
  set_property(TEST ${NAME} APPEND PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

function(_corvana_register NAME TIMEOUT)
  if(NOT TIMEOUT)
    set(TIMEOUT 60)
  endif()
  add_test(NAME ${NAME} COMMAND ${NAME})
  set_tests_properties(${NAME} PROPERTIES TIMEOUT ${TIMEOUT}
    ENVIRONMENT "LC_ALL=C.UTF-8;CORVANA_DATA=;ASAN_OPTIONS=detect_leaks=0")
endfunction()
