# What `cpack` makes: a .deb, which installs the product where it was configured to be, and a
# .tar.gz of the same tree, which can be unpacked anywhere.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME uquarndiffmrg)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_SYSTEM_NAME linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_VENDOR "The uquarndiffmrg developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compare and merge Unicode text files in a window")
set(CPACK_PACKAGE_DESCRIPTION
"uquarndiffmrg is a short command for comparing and merging text files in UTF-8,
UTF-16 and UTF-32. It hands its request to a service of the user, shows the
files in a window, waits until the user is done with it, and ends with a status
that tells scripts and version control whether a result was accepted.
.
Merges whose changes do not collide need no display.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/each_package.cmake)
set(CPACK_PRE_BUILD_SCRIPTS
  ${CMAKE_CURRENT_SOURCE_DIR}/debian/move_to_system.cmake
  ${CMAKE_CURRENT_SOURCE_DIR}/open_folders.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The uquarndiffmrg developers <developers@example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# One script for both: see what it says.
foreach(script IN ITEMS postinst postrm)
  configure_file(debian/end_old_services.sh ${script} @ONLY)
  list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/${script})
endforeach()

include(CPack)
