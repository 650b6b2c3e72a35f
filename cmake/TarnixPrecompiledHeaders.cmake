# Headers of others that many sources of a target include are read once for all of them. A source
# includes what it uses all the same: the clang preset is built without.
option(TARNIX_PRECOMPILED_HEADERS "Read the common headers of libraries once a target" ON)

function(tarnix_precompile target)
  if(TARNIX_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <chrono> <functional> <memory> <mutex> <optional> <string> <string_view> <vector>
      ${ARGN})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      # Of a precompiled header the compiler forgets that it is the system's, and reports its own
      # known mistakes about the insides of std::string.
      target_compile_options(${target} PRIVATE
        -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
  endif()
endfunction()
