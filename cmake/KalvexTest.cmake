# kalvex_test(NAME LABEL unit|wire|fault SOURCES ... LIBRARIES ...)
#
# One GoogleTest program, its cases registered one by one with CTest under the given label.
include(GoogleTest)

# Compiling these headers takes as long as all else in a test. Everything that makes code must be the
# same as for the tests.
add_library(test_headers OBJECT ${PROJECT_SOURCE_DIR}/tests/support/test_headers.cpp)
set_target_properties(test_headers PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_compile_options(test_headers PRIVATE -fPIE -O0)
target_precompile_headers(test_headers PRIVATE
  <functional> <map> <memory> <string> <thread> <vector> <gmock/gmock.h>)
target_link_libraries(test_headers PRIVATE kalvex_compile_options GTest::gmock_main)

function(kalvex_test name)
  cmake_parse_arguments(TEST "" "LABEL" "SOURCES;LIBRARIES" ${ARGN})
  if(NOT TEST_LABEL MATCHES "^(unit|wire|fault)$")
    message(FATAL_ERROR "kalvex_test(${name}): LABEL must be unit, wire or fault")
  endif()
  add_executable(${name} ${TEST_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE
    KALVEX_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  target_compile_options(${name} PRIVATE -O0)  # the compiler's time costs more than the tests'
  target_link_libraries(${name} PRIVATE ${TEST_LIBRARIES} kalvex_compile_options GTest::gmock_main)
  target_precompile_headers(${name} REUSE_FROM test_headers)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${TEST_LABEL} TIMEOUT 300)
endfunction()
