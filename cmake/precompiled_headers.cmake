# SPDX-License-Identifier: MIT
# Headers of the standard library are most of what a compiler reads here. Builds for developers read
# them once; releases read them with each source file, which shows what one has forgotten to include.
set(PRECOMPILED_HEADERS <algorithm> <array> <filesystem> <functional> <map> <memory>
  <memory_resource> <optional> <set> <shared_mutex> <span> <string> <string_view>
  <unordered_map> <variant> <vector>)

# For the first library, and then for those that take its headers over.
function(precompile_headers FIRST)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    return()
  endif()
  target_precompile_headers(${FIRST} PRIVATE ${PRECOMPILED_HEADERS})
  foreach(OTHER IN LISTS ARGN)
    target_precompile_headers(${OTHER} REUSE_FROM ${FIRST})
  endforeach()
endfunction()
