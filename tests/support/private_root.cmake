# corvane_private_root_test(<name> LABELS ... SOURCES ... USES ...): a test program that fills a Mac's tool folders itself.
function(corvane_private_root_test name)
  cmake_parse_arguments(ARG "" "" "LABELS;SOURCES;USES" ${ARGN})
  corvane_test_program(${name} ${ARGN})
  add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/support/private_root $<TARGET_FILE:${name}>)
  set_tests_properties(${name} PROPERTIES
    LABELS "${ARG_LABELS}" ENVIRONMENT "${CORVANE_TEST_ENVIRONMENT}" TIMEOUT 300 SKIP_RETURN_CODE 77)
endfunction()
