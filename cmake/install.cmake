# SPDX-License-Identifier: MIT
# What "cmake --install" puts where, the program apart. The unit names the installed program and its
# configuration by their full paths.

set(CRADLE_UNIT_DIR lib/systemd/system CACHE STRING "Where systemd units are installed")
set(CRADLE_TMPFILES_DIR lib/tmpfiles.d CACHE STRING "Where entries for systemd-tmpfiles are installed")

# The full path: below /usr it is /etc, not /usr/etc.
set(DEFAULT_CONFIGURATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/cradle.conf.d)
set(UNIT system/cradle-generate-config@.service)
configure_file(${UNIT}.in ${UNIT} @ONLY)

install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${UNIT}
        DESTINATION ${CRADLE_UNIT_DIR} COMPONENT runtime)
install(FILES system/cradle-generate-config.conf
        DESTINATION ${CRADLE_TMPFILES_DIR} COMPONENT runtime)
set(HOOKS PATTERN *.sh PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                   WORLD_READ WORLD_EXECUTE)
install(DIRECTORY conf/cradle.conf.d/
        DESTINATION ${DEFAULT_CONFIGURATION} COMPONENT runtime ${HOOKS})
install(DIRECTORY conf/device.conf.d
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT runtime ${HOOKS})
install(FILES README.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
