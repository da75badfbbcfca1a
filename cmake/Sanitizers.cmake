option(BENTHOR_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

add_library(benthor_sanitizers INTERFACE)
if(BENTHOR_SANITIZE)
  # -O1 keeps the fuzzing tests within their time; -g1 keeps line numbers without the size of full debug information.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=address,undefined)
endif()
