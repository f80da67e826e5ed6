# SPDX-License-Identifier: MIT
# Holds a layer to what it is built on: it must link without what is above it.

# The objects of the layer, and of those below it, become a library in which nothing may be missing.
# All of them are kept: what the linker throws away, it does not check.
function(must_link_alone LAYER)
  # A sanitizer of Clang leaves its own functions to the program.
  if(CRADLE_SANITIZE AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    return()
  endif()
  add_library(layer-${LAYER} MODULE ${ARGN})
  set_target_properties(layer-${LAYER} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_options(layer-${LAYER} PRIVATE -Wl,-z,defs -Wl,--no-gc-sections)
  target_link_libraries(layer-${LAYER} PRIVATE ${CMAKE_DL_LIBS})
endfunction()
