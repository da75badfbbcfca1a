# The program folder of a fresh installation, and the icons: all drawn or made by our own programs at the build.
find_program(CMARK_GFM cmark-gfm REQUIRED)
set(BENTHOR_DRAWN)
# Qt wants a folder of the session that is its owner's alone, and complains at each start where there is none.
set(session ${CMAKE_CURRENT_BINARY_DIR}/session)
file(MAKE_DIRECTORY ${session})
file(CHMOD ${session} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(without_display ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 XDG_RUNTIME_DIR=${session})

# --- the program folder

set(folder ${CMAKE_CURRENT_BINARY_DIR}/folder)
foreach(empty new old corrupt dbtxt jpg Reprog ports)
  file(MAKE_DIRECTORY ${folder}/${empty})
endforeach()
foreach(name default.mit gdata.mit TIPOFDAY.TXT)
  configure_file(${PROJECT_SOURCE_DIR}/assets/folder/${name} ${folder}/${name} COPYONLY)
endforeach()

add_custom_command(OUTPUT ${folder}/rb.mdb
  COMMAND ${CMAKE_COMMAND} -E rm -f ${folder}/rb.mdb
  COMMAND benthor-makestore ${folder}/rb.mdb
  VERBATIM)
list(APPEND BENTHOR_DRAWN ${folder}/rb.mdb)

# benthor_pictures(<folder of drawings> <options of the program>)
function(benthor_pictures drawings)
  file(GLOB sources CONFIGURE_DEPENDS ${drawings}/*.svg)
  set(pictures)
  foreach(source ${sources})
    cmake_path(GET source STEM stem)
    list(APPEND pictures ${folder}/${stem}.bmp)
  endforeach()
  add_custom_command(OUTPUT ${pictures}
    COMMAND ${without_display} $<TARGET_FILE:benthor-renderpictures> ${ARGN} ${drawings} ${folder}
    DEPENDS benthor-renderpictures ${sources}
    VERBATIM)
  set(BENTHOR_DRAWN ${BENTHOR_DRAWN} ${pictures} PARENT_SCOPE)
endfunction()
benthor_pictures(${PROJECT_SOURCE_DIR}/assets/pictures)
benthor_pictures(${PROJECT_SOURCE_DIR}/assets/logos --logo)

file(GLOB manual_pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/pictures/manual-*.png)
add_custom_command(OUTPUT ${folder}/manualbenthor.mht
  COMMAND ${CMARK_GFM} --extension table ${PROJECT_SOURCE_DIR}/docs/manual.md
    | $<TARGET_FILE:benthor-makemanual> ${PROJECT_SOURCE_DIR}/docs ${folder}/manualbenthor.mht
  DEPENDS benthor-makemanual ${PROJECT_SOURCE_DIR}/docs/manual.md ${manual_pictures}
  VERBATIM)
list(APPEND BENTHOR_DRAWN ${folder}/manualbenthor.mht)

# --- the icons

# benthor_icons(<drawing> <kind> <name>): the drawing itself, and pictures of it for desktops that want those. Small ones of
# the program come from a drawing of their own, with less in it.
function(benthor_icons drawing kind name)
  set(icons ${CMAKE_CURRENT_BINARY_DIR}/icons)
  configure_file(${drawing} ${icons}/scalable/${kind}/${name}.svg COPYONLY)
  set(pictures)
  foreach(size 16 22 24 32 48 64 128 256)
    set(source ${drawing})
    cmake_path(GET drawing STEM stem)
    if(size LESS_EQUAL 24 AND EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/icons/${stem}-small.svg)
      set(source ${CMAKE_CURRENT_SOURCE_DIR}/icons/${stem}-small.svg)
    endif()
    set(picture ${icons}/${size}x${size}/${kind}/${name}.png)
    file(MAKE_DIRECTORY ${icons}/${size}x${size}/${kind})
    add_custom_command(OUTPUT ${picture}
      COMMAND ${without_display} $<TARGET_FILE:benthor-renderpictures> --icon ${size} ${source} ${picture}
      DEPENDS benthor-renderpictures ${source}
      VERBATIM)
    list(APPEND pictures ${picture})
  endforeach()
  set(BENTHOR_DRAWN ${BENTHOR_DRAWN} ${pictures} PARENT_SCOPE)
endfunction()
benthor_icons(${PROJECT_SOURCE_DIR}/assets/benthor.svg apps benthor)
foreach(type text-x-benthor-setup application-x-benthor-firmware)
  benthor_icons(${CMAKE_CURRENT_SOURCE_DIR}/icons/${type}.svg mimetypes ${type})
endforeach()
