# What an installation tells of itself: man pages, changes and metadata, each with this version in it.
find_program(GZIP gzip REQUIRED)
set(BENTHOR_TOLD)

# What is not released yet is dated by its last change, so that the same sources make the same package.
execute_process(COMMAND git log -1 --format=%ct -- CHANGELOG.md
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE changed OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT changed)
  file(TIMESTAMP ${PROJECT_SOURCE_DIR}/CHANGELOG.md changed "%s" UTC)
endif()
set(ENV{SOURCE_DATE_EPOCH} ${changed})
string(TIMESTAMP changed "%Y-%m-%dT%H:%M:%SZ" UTC)
unset(ENV{SOURCE_DATE_EPOCH})

set(changes ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
  COMMAND benthor-makechanges debian ${changes} ${PROJECT_VERSION} ${changed} > changelog
  COMMAND ${GZIP} -9nf changelog
  DEPENDS benthor-makechanges ${changes}
  VERBATIM)
list(APPEND BENTHOR_TOLD ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)

set(metainfo example.benthor.benthor.metainfo.xml)
add_custom_command(OUTPUT ${metainfo}
  COMMAND benthor-makechanges appstream ${changes} ${PROJECT_VERSION} ${changed} > releases.xml
  COMMAND ${CMAKE_COMMAND} -D IN=${CMAKE_CURRENT_SOURCE_DIR}/${metainfo}.in -D OUT=${metainfo} -D RELEASES=releases.xml
    -P ${CMAKE_CURRENT_SOURCE_DIR}/FillIn.cmake
  DEPENDS benthor-makechanges ${changes} ${metainfo}.in FillIn.cmake
  VERBATIM)
list(APPEND BENTHOR_TOLD ${CMAKE_CURRENT_BINARY_DIR}/${metainfo})

# A page says which version it is of.
foreach(program benthor benthorctl kdsim)
  set(page ${PROJECT_SOURCE_DIR}/docs/${program}.1)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page})
  file(READ ${page} text)
  string(REPLACE "\"Benthor\" \"User Commands\"" "\"Benthor ${PROJECT_VERSION}\" \"User Commands\"" told "${text}")
  if(told STREQUAL text)
    message(FATAL_ERROR "${page} has no head that the version can be put into")
  endif()
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/pages/${program}.1 CONTENT "${told}")
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/man)
  add_custom_command(OUTPUT man/${program}.1.gz
    COMMAND ${GZIP} -9nc pages/${program}.1 > man/${program}.1.gz
    DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/pages/${program}.1
    VERBATIM)
  list(APPEND BENTHOR_TOLD ${CMAKE_CURRENT_BINARY_DIR}/man/${program}.1.gz)
endforeach()
