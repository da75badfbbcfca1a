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

# Holds nothing but the precompiled header that others reuse.
function(benthor_precompiled kind)
  if(NOT BENTHOR_PCH)
    return()
  endif()
  set(file ${PROJECT_BINARY_DIR}/pch_${kind}.cpp)
  file(CONFIGURE OUTPUT ${file} CONTENT "") # left alone where it is there: all would be built anew
  add_library(benthor_pch_${kind} STATIC ${file})
  set_target_properties(benthor_pch_${kind} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(benthor_pch_${kind} PRIVATE benthor_${kind}_base)
  target_precompile_headers(benthor_pch_${kind} PRIVATE ${ARGN})
endfunction()

benthor_precompiled(logic
  <QtCore/QtCore> <SQLiteCpp/SQLiteCpp.h> <algorithm> <array> <cmath> <cstdint> <functional> <memory> <optional> <string>
  <string_view> <vector>)
benthor_precompiled(screen
  <QtWidgets/QtWidgets> <qcustomplot.h> <algorithm> <array> <cmath> <cstdint> <functional> <memory> <optional>
  <string> <vector>)

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

# benthor_test(<name> SOURCES ... LINKS ... [SCREENS] [TIMEOUT s]): one QtTest program, run without a display.
# The test data stand at BENTHOR_TEST_DATA.
function(benthor_test name)
  cmake_parse_arguments(TEST "SCREENS" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
  if(TEST_SCREENS)
    set(kind screen)
  else()
    set(kind logic)
  endif()
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE benthor_${kind}_base ${TEST_LINKS} Qt6::Test)
  if(BENTHOR_PCH)
    target_precompile_headers(${name} REUSE_FROM benthor_pch_${kind})
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  set_source_files_properties(${TEST_SOURCES} PROPERTIES
    COMPILE_DEFINITIONS "BENTHOR_TEST_DATA=\"${PROJECT_SOURCE_DIR}/tests/data\"")
  add_test(NAME ${name} COMMAND ${name})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp"
    TIMEOUT ${TEST_TIMEOUT})
endfunction()

# benthor_reads_jet(<test>): a test that reads Jet files, with the reading program of this build. The files lie beside
# the project, not in it; where they are not the test says so.
set(BENTHOR_JET_FILES "${PROJECT_SOURCE_DIR}/../shared/jet" CACHE PATH "Folder of the Jet files that tests read")
function(benthor_reads_jet name)
  target_compile_definitions(${name} PRIVATE
    BENTHOR_JET_FILES="${BENTHOR_JET_FILES}" BENTHOR_READJET="$<TARGET_FILE:benthor-readjet>")
  add_dependencies(${name} benthor-readjet)
endfunction()
