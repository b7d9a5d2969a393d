# Finds an installed OpenPegasus client library.
#
#   OpenPegasus_ROOT      prefix of the installation (variable or environment); searched alone
#   OpenPegasus_PLATFORM  the library's name for this platform, where the derived one is wrong
#
# Gives the target OpenPegasus::Client: the client and common libraries with their headers and the
# compile definition that these need.
include(FindPackageHandleStandardArgs)

set(_search "")
if(OpenPegasus_ROOT)
  set(_search PATHS ${OpenPegasus_ROOT} NO_DEFAULT_PATH)
elseif(DEFINED ENV{OpenPegasus_ROOT})
  set(_search PATHS $ENV{OpenPegasus_ROOT} NO_DEFAULT_PATH)
endif()

find_path(OpenPegasus_INCLUDE_DIR Pegasus/Client/CIMClient.h PATH_SUFFIXES include ${_search})
# The versioned names too: packages leave the links without a version to an installation script.
foreach(_library IN ITEMS client common)
  find_library(OpenPegasus_${_library}_LIBRARY NAMES peg${_library} libpeg${_library}.so.1
    PATH_SUFFIXES lib64 lib lib/${CMAKE_LIBRARY_ARCHITECTURE} ${_search})
endforeach()

# The headers refuse to compile without the name of their platform.
include(${CMAKE_CURRENT_LIST_DIR}/OpenPegasusPlatform.cmake)
openpegasus_platform(_platform
  "${CMAKE_SYSTEM_PROCESSOR}" "${CMAKE_SIZEOF_VOID_P}" "${CMAKE_CXX_COMPILER_ID}")
set(OpenPegasus_PLATFORM "${_platform}" CACHE STRING "OpenPegasus' name for this platform")
mark_as_advanced(OpenPegasus_INCLUDE_DIR OpenPegasus_client_LIBRARY OpenPegasus_common_LIBRARY
  OpenPegasus_PLATFORM)

# Packages have left out headers that others include, so they are compiled.
function(_openpegasus_compile_headers usable complaint)
  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
  try_compile(compiles
    SOURCE_FROM_CONTENT headers.cpp "#include <Pegasus/Client/CIMClient.h>\n"
    CMAKE_FLAGS -DINCLUDE_DIRECTORIES=${OpenPegasus_INCLUDE_DIR}
    COMPILE_DEFINITIONS -DPEGASUS_PLATFORM_${OpenPegasus_PLATFORM}
    OUTPUT_VARIABLE output
    NO_CACHE)
  set(${usable} ${compiles} PARENT_SCOPE)
  set(${complaint} "header set that compiles" PARENT_SCOPE)
  if(output MATCHES "fatal error: '?(Pegasus/[A-Za-z0-9/]+\\.h)")
    set(${complaint} "header ${CMAKE_MATCH_1}" PARENT_SCOPE)
  elseif(output MATCHES "error: ([^\n]+)")
    set(${complaint} "header set that compiles (${CMAKE_MATCH_1})" PARENT_SCOPE)
  endif()
endfunction()

set(_missing "")
set(_packages "")
set(OpenPegasus_HEADERS_USABLE FALSE)
if(NOT OpenPegasus_INCLUDE_DIR)
  list(APPEND _missing "header Pegasus/Client/CIMClient.h")
  list(APPEND _packages "tog-pegasus-devel (headers)")
elseif(NOT OpenPegasus_PLATFORM)
  list(APPEND _missing
    "platform name for ${CMAKE_SYSTEM_PROCESSOR}, which OpenPegasus_PLATFORM can give")
else()
  _openpegasus_compile_headers(OpenPegasus_HEADERS_USABLE _complaint)
  if(NOT OpenPegasus_HEADERS_USABLE)
    list(APPEND _missing "${_complaint}")
    list(APPEND _packages "tog-pegasus-devel (headers)")
  endif()
endif()
foreach(_library IN ITEMS client common)
  if(NOT OpenPegasus_${_library}_LIBRARY)
    list(APPEND _missing "library libpeg${_library}")
    list(APPEND _packages "tog-pegasus-libs (libraries)")
  endif()
endforeach()
list(REMOVE_DUPLICATES _packages)
list(JOIN _missing ", " _missing)
list(JOIN _packages " and " _packages)
if(_packages)
  string(PREPEND _packages " On RPM distributions install ")
  string(APPEND _packages ". For an installation elsewhere set OpenPegasus_ROOT to its prefix.")
endif()

find_package_handle_standard_args(OpenPegasus
  REQUIRED_VARS OpenPegasus_INCLUDE_DIR OpenPegasus_HEADERS_USABLE OpenPegasus_client_LIBRARY
    OpenPegasus_common_LIBRARY
  REASON_FAILURE_MESSAGE "There is no ${_missing}.${_packages}")

if(OpenPegasus_FOUND AND NOT TARGET OpenPegasus::Client)
  find_package(Threads REQUIRED)
  add_library(OpenPegasus::Client INTERFACE IMPORTED GLOBAL)
  target_include_directories(OpenPegasus::Client INTERFACE ${OpenPegasus_INCLUDE_DIR})
  target_compile_definitions(OpenPegasus::Client INTERFACE
    PEGASUS_PLATFORM_${OpenPegasus_PLATFORM})
  target_link_libraries(OpenPegasus::Client INTERFACE
    ${OpenPegasus_client_LIBRARY} ${OpenPegasus_common_LIBRARY} Threads::Threads)
endif()
