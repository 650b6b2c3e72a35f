# Headers of others that many sources of a target include are read once for all of them. A source
# includes what it uses all the same: the clang preset is built without.
option(TARNIX_PRECOMPILED_HEADERS "Read the common headers of libraries once a target" ON)

function(tarnix_precompile target)
  if(TARNIX_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <chrono> <functional> <memory> <mutex> <optional> <string> <string_view> <vector>
      ${ARGN})
  endif()
endfunction()
