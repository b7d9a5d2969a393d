# The warnings and include root that every target of this project has.
add_library(kalvex_compile_options INTERFACE)
target_include_directories(kalvex_compile_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(kalvex_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<BOOL:${KALVEX_WARNINGS_AS_ERRORS}>:-Werror>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>  # GCC 12 sees overlaps in std::string's operator+
  $<$<CXX_COMPILER_ID:Clang>:-Wno-inline-namespace-reopened-noninline>  # Config.h opened it inline
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
