# Read by cpack before it makes each package.
if(CPACK_GENERATOR STREQUAL DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX ${CPACK_INSTALL_PREFIX})
endif()
