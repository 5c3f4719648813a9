# Run by cpack just before the packing: all may enter the folders, whatever the umask it runs with.
# CMake's own way would follow the links out of the staging folder.
execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -type d -exec chmod 755 {} +
  COMMAND_ERROR_IS_FATAL ANY)
