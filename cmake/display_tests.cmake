# Tests on a display, each case an entry of its own: `ctest -R NAME` runs it alone, with the display that it needs.
set(NORVIK_X_DISPLAY ${PROJECT_SOURCE_DIR}/tests/support/x_display)

# norvik_add_display(NAME): an X server with a window manager. It starts before the first test that needs it and ends after
# the last; only one of these tests runs at a time, as there is one keyboard focus.
function(norvik_add_display name)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${name}.display)
  add_test(NAME ${name}.display.starts COMMAND ${NORVIK_X_DISPLAY} start ${folder})
  add_test(NAME ${name}.display.ends COMMAND ${NORVIK_X_DISPLAY} stop ${folder})
  set_tests_properties(${name}.display.starts PROPERTIES FIXTURES_SETUP ${name}.display COST 1000)
  set_tests_properties(${name}.display.ends PROPERTIES FIXTURES_CLEANUP ${name}.display)
endfunction()

# norvik_discover_tests_on(DISPLAY TARGET PREFIX [FILTER filter] [LAUNCHER program...] [PROPERTIES name value...]): the cases of a
# GoogleTest program, or those that the filter lets through, on the display that norvik_add_display(DISPLAY) made in this
# folder. LAUNCHER runs the program.
function(norvik_discover_tests_on display target prefix)
  cmake_parse_arguments(PARSE_ARGV 3 given "" "FILTER" "LAUNCHER;PROPERTIES")
  set_property(TARGET ${target} PROPERTY CROSSCOMPILING_EMULATOR
    ${NORVIK_X_DISPLAY} in ${CMAKE_CURRENT_BINARY_DIR}/${display}.display ${given_LAUNCHER})
  gtest_discover_tests(${target} TEST_PREFIX ${prefix} TEST_FILTER "${given_FILTER}" TEST_LIST ${prefix}tests
    DISCOVERY_TIMEOUT 60
    PROPERTIES FIXTURES_REQUIRED ${display}.display RESOURCE_LOCK ${display}.display COST 500 ${given_PROPERTIES})
  set_property(TARGET ${target} PROPERTY CROSSCOMPILING_EMULATOR)
endfunction()
