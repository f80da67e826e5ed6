# SPDX-License-Identifier: MIT
# The configuration library for other programs: the shared library beside the static one, and the
# headers, the pkg-config file and the CMake package by which they are found. docs/library.md tells
# how they are used.

set(PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/cradle-config)
set(INSTALLED_LIBRARIES)

if(CRADLE_SHARED_LIBRARY)
  # The objects are those of the static library.
  add_library(cradle-config-shared SHARED $<TARGET_OBJECTS:cradle-config>)
  set(SYMBOLS ${CMAKE_CURRENT_LIST_DIR}/cradle-config.map)
  set_target_properties(cradle-config-shared PROPERTIES
    EXPORT_NAME Config
    LINKER_LANGUAGE CXX
    LINK_DEPENDS ${SYMBOLS}
    OUTPUT_NAME cradle-config
    SOVERSION ${PROJECT_VERSION_MAJOR}
    VERSION ${PROJECT_VERSION})
  target_link_options(cradle-config-shared PRIVATE -Wl,--version-script=${SYMBOLS})
  target_link_libraries(cradle-config-shared PRIVATE ${CMAKE_DL_LIBS})
  list(APPEND INSTALLED_LIBRARIES cradle-config-shared)
endif()

if(CRADLE_STATIC_LIBRARY)
  set_target_properties(cradle-config PROPERTIES EXPORT_NAME ConfigStatic)
  list(APPEND INSTALLED_LIBRARIES cradle-config)
endif()

if(NOT INSTALLED_LIBRARIES)
  return()
endif()

foreach(LIBRARY IN LISTS INSTALLED_LIBRARIES)
  target_compile_features(${LIBRARY} INTERFACE cxx_std_20)
endforeach()
install(TARGETS ${INSTALLED_LIBRARIES} EXPORT cradle-config-targets
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

foreach(HEADER IN LISTS PUBLIC_HEADERS)
  get_filename_component(DIRECTORY ${HEADER} DIRECTORY)
  install(FILES ${HEADER} COMPONENT development
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/cradle-config/${DIRECTORY})
endforeach()

include(CMakePackageConfigHelpers)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/cradle-config-config.cmake.in
  cradle-config-config.cmake INSTALL_DESTINATION ${PACKAGE_DIR})
write_basic_package_version_file(cradle-config-config-version.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT cradle-config-targets NAMESPACE Cradle:: COMPONENT development
  DESTINATION ${PACKAGE_DIR})
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/cradle-config-config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/cradle-config-config-version.cmake
  COMPONENT development DESTINATION ${PACKAGE_DIR})

# The file finds the tree that it lies in, wherever that is moved, unless a packager has given the
# directories in full.
file(RELATIVE_PATH TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" TO_PREFIX "${TO_PREFIX}")
set(PC_PREFIX "\${pcfiledir}/${TO_PREFIX}")
set(PC_LIBDIR "\${prefix}")
set(PC_INCLUDEDIR "\${prefix}")
cmake_path(APPEND PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
list(TRANSFORM CMAKE_DL_LIBS PREPEND "-l" OUTPUT_VARIABLE PC_BELOW)
# Whoever has the shared library needs what is below it for static linking only.
if(CRADLE_SHARED_LIBRARY)
  set(PC_LIBS_PRIVATE ${PC_BELOW})
else()
  set(PC_LIBS " ${PC_BELOW}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/cradle-config.pc.in cradle-config.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/cradle-config.pc COMPONENT development
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
