# A room is a static library under src/. Logic libraries see QtCore and the store; screen libraries see the widgets.
# Each kind has one precompiled header that all libraries of that kind share, so flags must be the same within a kind:
# that is why a room links one of the two bases below and nothing of Qt by itself.

# ccache with a precompiled header needs both.
set(ENV{CCACHE_SLOPPINESS} "pch_defines,time_macros")

add_library(benthor_logic_base INTERFACE)
target_link_libraries(benthor_logic_base INTERFACE benthor_warnings Qt6::Core Qt6::SerialPort SQLiteCpp)
target_include_directories(benthor_logic_base INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})

add_library(benthor_screen_base INTERFACE)
target_link_libraries(benthor_screen_base INTERFACE
  benthor_warnings Qt6::Core Qt6::SerialPort SQLiteCpp Qt6::Widgets Qt6::Svg Qt6::SvgWidgets Qt6::PrintSupport Qt6::Network QCustomPlotQt6)
target_compile_definitions(benthor_screen_base INTERFACE QCUSTOMPLOT_USE_LIBRARY)
target_include_directories(benthor_screen_base INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})

option(BENTHOR_PCH "Build with precompiled headers; clang-tidy needs a build without" ON)

# What a test is built with beside its room. The program is what the sanitizers are to look into: to find undefined
# behaviour in the tests' own code, too, would cost a third of their time to build. The two macros differ from folder to
# folder, so that no header with them could be precompiled once for all.
add_library(benthor_test_base INTERFACE)
target_link_libraries(benthor_test_base INTERFACE Qt6::Test)
target_compile_options(benthor_test_base INTERFACE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
if(BENTHOR_SANITIZE)
  target_compile_options(benthor_test_base INTERFACE -fno-sanitize=undefined)
endif()

# Holds nothing but the precompiled header that others reuse: benthor_precompiled(<kind> [TEST] HEADERS ...).
function(benthor_precompiled kind)
  cmake_parse_arguments(PCH "TEST" "" "HEADERS" ${ARGN})
  if(NOT BENTHOR_PCH)
    return()
  endif()
  set(name benthor_pch_${kind})
  if(PCH_TEST)
    set(name ${name}_test)
  endif()
  set(file ${PROJECT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${file} CONTENT "") # left alone where it is there: all would be built anew
  add_library(${name} STATIC ${file})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE benthor_${kind}_base)
  if(PCH_TEST)
    target_link_libraries(${name} PRIVATE benthor_test_base)
    list(APPEND PCH_HEADERS <QtTest/QtTest>)
  endif()
  target_precompile_headers(${name} PRIVATE ${PCH_HEADERS})
endfunction()

set(logic_headers <QtCore/QtCore> <SQLiteCpp/SQLiteCpp.h>
  <algorithm> <array> <cmath> <cstdint> <functional> <memory> <optional> <string> <string_view> <vector>)
set(screen_headers <QtWidgets/QtWidgets> <qcustomplot.h>
  <algorithm> <array> <cmath> <cstdint> <functional> <memory> <optional> <string> <vector>)
benthor_precompiled(logic HEADERS ${logic_headers})
benthor_precompiled(screen HEADERS ${screen_headers})
benthor_precompiled(logic TEST HEADERS ${logic_headers})
benthor_precompiled(screen TEST HEADERS ${screen_headers})

# benthor_room(<name> LOGIC|SCREENS SOURCES ... [LINKS ...])
function(benthor_room name)
  cmake_parse_arguments(ROOM "LOGIC;SCREENS" "" "SOURCES;LINKS" ${ARGN})
  if(ROOM_SCREENS)
    set(kind screen)
  else()
    set(kind logic)
  endif()
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC benthor_${kind}_base ${ROOM_LINKS})
  if(BENTHOR_PCH)
    target_precompile_headers(${name} REUSE_FROM benthor_pch_${kind})
  endif()
endfunction()

# benthor_mocs(<target> <source> ...): the meta-object code of sources that include it as their own "name.moc". CMake's
# AUTOMOC would look into each target with a process of its own, which with hundreds of tests takes minutes.
function(benthor_mocs target)
  set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_mocs)
  target_include_directories(${target} PRIVATE ${folder})
  foreach(source ${ARGN})
    cmake_path(GET source STEM stem)
    file(STRINGS ${source} included REGEX "^#include \"${stem}\\.moc\"")
    if(included)
      qt_generate_moc(${CMAKE_CURRENT_SOURCE_DIR}/${source} ${folder}/${stem}.moc TARGET ${target})
      target_sources(${target} PRIVATE ${folder}/${stem}.moc)
    endif()
  endforeach()
endfunction()

# benthor_test(<name> SOURCES ... LINKS ... [SCREENS]): one QtTest program, run without a display. The test data stand at
# BENTHOR_TEST_DATA. The limits of time, QtTest's own and the presets', are there to end what hangs, whatever the machine's
# load, and measure nothing.
function(benthor_test name)
  cmake_parse_arguments(TEST "SCREENS" "" "SOURCES;LINKS" ${ARGN})
  if(TEST_SCREENS)
    set(kind screen)
  else()
    set(kind logic)
  endif()
  add_executable(${name} ${TEST_SOURCES})
  benthor_mocs(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE benthor_${kind}_base ${TEST_LINKS} benthor_test_base)
  if(BENTHOR_PCH)
    target_precompile_headers(${name} REUSE_FROM benthor_pch_${kind}_test)
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  set_source_files_properties(${TEST_SOURCES} PROPERTIES
    COMPILE_DEFINITIONS "BENTHOR_TEST_DATA=\"${PROJECT_SOURCE_DIR}/tests/data\"")
  add_test(NAME ${name} COMMAND ${name})
  set(environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QTEST_FUNCTION_TIMEOUT=900000
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp)
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}")
endfunction()

# benthor_reads_jet(<test>): a test that reads Jet files, with the reading program of this build. The files lie beside
# the project, not in it; where they are not the test says so.
set(BENTHOR_JET_FILES "${PROJECT_SOURCE_DIR}/../shared/jet" CACHE PATH "Folder of the Jet files that tests read")
function(benthor_reads_jet name)
  target_compile_definitions(${name} PRIVATE
    BENTHOR_JET_FILES="${BENTHOR_JET_FILES}" BENTHOR_READJET="$<TARGET_FILE:benthor-readjet>")
  add_dependencies(${name} benthor-readjet)
endfunction()
