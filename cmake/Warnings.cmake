# Every target of ours links this. Qt and the other libraries come in as system headers and are not warned about.
# -Wnull-dereference is left out: it reports Qt's own inlined casts as soon as a test is optimised.
add_library(benthor_warnings INTERFACE)
target_compile_options(benthor_warnings INTERFACE
  -Wall -Wextra -Wpedantic
  -Wshadow                # a name that hides another is read wrong sooner or later
  -Wnon-virtual-dtor      # deleting through a base must be safe
  -Wold-style-cast        # say which cast is meant
  -Woverloaded-virtual    # an override that misses its target is silent otherwise
  -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
  $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
  -Werror)
