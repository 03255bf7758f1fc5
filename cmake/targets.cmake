# One function a kind of target.

# A source without content, for libraries that consist of other libraries.
set(VELTORA_EMPTY_SOURCE ${CMAKE_BINARY_DIR}/empty.cpp)
file(CONFIGURE OUTPUT ${VELTORA_EMPTY_SOURCE} CONTENT "// empty\n")

# Compiles the library headers that nearly every source includes only once a target, where no compiler cache does better.
# Sources of Eigen do without: behind a precompiled header its prefetches do not compile unoptimised (gcc 12).
function(veltora_precompile target)
  if(NOT CCACHE)
    get_target_property(sources ${target} SOURCES)
    foreach(source ${sources})
      if(source MATCHES "\\.cpp$" AND EXISTS ${source})
        file(STRINGS ${source} eigen REGEX "^#include <Eigen/")
        if(eigen)
          set_source_files_properties(${source} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
        endif()
      endif()
    endforeach()
    target_precompile_headers(${target} PRIVATE <algorithm> <cmath> <functional> <map> <memory> <string>
                              <unordered_map> <vector> <fmt/printf.h> <fmt/xchar.h> ${ARGN})
  endif()
endfunction()

# A room of the module: every source of src/<name> and its folders but dialogs/, linked into the module and into the unit
# tests. The room called "dialogs" is the dialogs of all rooms.
#   veltora_layer(<name> [LEAVE <source of another target>] [LINK <libraries>...])
function(veltora_layer name)
  cmake_parse_arguments(ARG "" "LEAVE" "LINK" ${ARGN})
  if(name STREQUAL "dialogs")
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*/dialogs/*.cpp)
  else()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/dialogs/")
    if(ARG_LEAVE)
      list(FILTER sources EXCLUDE REGEX "/${ARG_LEAVE}$")
    endif()
  endif()
  add_library(veltora_${name} STATIC ${sources} ${VELTORA_EMPTY_SOURCE})
  set_target_properties(veltora_${name} PROPERTIES LINKER_LANGUAGE CXX CXX_VISIBILITY_PRESET hidden
                        VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(veltora_${name} PUBLIC ${ARG_LINK})
  veltora_precompile(veltora_${name})
endfunction()

# Unit tests of one room: every source of tests/<name> and its folders, one program, run alone with `ctest -R unit.<name>`.
# The suite runs a second time in a French locale and another time zone.
# OWN: the sources know a path or a flag of this build. With VELTORA_PLAIN_BUILD, the folder of a build without sanitizers, all others are
# taken from there, compiled: the sanitizers watch what the tests call, and compiling the tests takes a quarter of the time.
#   veltora_unit_tests(<name> [OWN] [LINK <libraries>...])
function(veltora_unit_tests name)
  cmake_parse_arguments(ARG "OWN" "" "LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  list(APPEND sources ${CMAKE_SOURCE_DIR}/tests/support/main.cpp)
  if(VELTORA_PLAIN_BUILD AND NOT ARG_OWN)
    list(TRANSFORM sources REPLACE "^${CMAKE_SOURCE_DIR}/(.*)$" "${VELTORA_PLAIN_BUILD}/tests/CMakeFiles/test_${name}.dir/\\1.o")
    list(TRANSFORM sources REPLACE "test_${name}.dir/tests/" "test_${name}.dir/")
    set_source_files_properties(${sources} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    list(APPEND sources ${VELTORA_EMPTY_SOURCE})
  endif()
  add_executable(test_${name} ${sources})
  # Not beside the program: the shipped data stands there.
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/bin)
  target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(test_${name} PRIVATE VELTORA_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(test_${name} PRIVATE ${ARG_LINK} GTest::gtest)
  if(NOT VELTORA_PLAIN_BUILD OR ARG_OWN)
    veltora_precompile(test_${name} <gtest/gtest.h>)
  endif()
  add_test(NAME unit.${name} COMMAND test_${name} --gtest_brief=1)
  add_test(NAME unit.${name}.fr COMMAND test_${name} --gtest_brief=1)
  # A program that holds configuration variables writes them when it starts: not to the user's own folder.
  set(installation "VELTORA_INSTALLATION=${CMAKE_BINARY_DIR}/installation")
  set_tests_properties(unit.${name} PROPERTIES ENVIRONMENT "${installation}")
  set_tests_properties(unit.${name}.fr PROPERTIES ENVIRONMENT "LC_ALL=fr_FR.UTF-8;TZ=Pacific/Noumea;${installation}")
endfunction()

# A benchmark: bench/<name>.cpp, a program that prints one table.
function(veltora_bench name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${CMAKE_SOURCE_DIR}/bench/${name}.cpp)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/bench)
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
endfunction()
