# Fails when the sources have words that a translation lacks, or a translation words that they do not
# have any more.
file(COPY_FILE ${WORDS} ${COPY})
execute_process(COMMAND ${LUPDATE} -silent -locations none ${SOURCES} -ts ${COPY}
  COMMAND_ERROR_IS_FATAL ANY)
file(READ ${COPY} updated)
if(updated MATCHES "type=\"(unfinished|vanished|obsolete)\"")
  message(FATAL_ERROR "${WORDS} is not up to date; see ${COPY}")
endif()
