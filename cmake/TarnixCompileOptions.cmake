# What every target of the project is compiled with.

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Werror
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
  -fno-omit-frame-pointer)

# Lines for the stacks of reports; what variables hold is for the debug preset, and a third more to
# compile.
if(TARNIX_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_options(-g1)
endif()

if(TARNIX_SANITIZE)
  add_compile_options(-fsanitize=${TARNIX_SANITIZE} -fno-sanitize-recover=all)
  if(TARNIX_SANITIZE MATCHES undefined)
    # That check opens a pipe to find out whether memory is there, and so reports every object in the
    # tests that use up the descriptors.
    add_compile_options(-fno-sanitize=vptr)
  endif()
  add_link_options(-fsanitize=${TARNIX_SANITIZE})
else()
  # A symbol that no library defines must fail here, not in somebody's application.
  add_link_options(LINKER:--no-undefined)
endif()
