# Style checks: clang-tidy with every compilation; the others as tests.
find_program(CLANG_TIDY clang-tidy REQUIRED)
find_program(CLANG_FORMAT clang-format REQUIRED)
find_program(CPPCHECK cppcheck REQUIRED)
find_program(SHELLCHECK shellcheck REQUIRED)
find_program(MANDOC mandoc REQUIRED)

set(CMAKE_CXX_CLANG_TIDY ${CLANG_TIDY} --quiet)

file(GLOB_RECURSE sources RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/bench/*.[ch]* ${PROJECT_SOURCE_DIR}/cmdline/*.[ch]*
  ${PROJECT_SOURCE_DIR}/launcher/*.[ch]* ${PROJECT_SOURCE_DIR}/platform/*.[ch]*
  ${PROJECT_SOURCE_DIR}/prompt/*.[ch]* ${PROJECT_SOURCE_DIR}/protocol/*.[ch]* ${PROJECT_SOURCE_DIR}/service/*.[ch]*
  ${PROJECT_SOURCE_DIR}/support/*.[ch]* ${PROJECT_SOURCE_DIR}/tests/*.[ch]*
  ${PROJECT_SOURCE_DIR}/viewer/*.[ch]*)
list(FILTER sources INCLUDE REGEX "\\.(c|cpp|h)$")

add_test(NAME style.clang_format
  COMMAND ${CLANG_FORMAT} --dry-run --Werror ${sources}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
add_test(NAME style.cppcheck
  COMMAND ${CPPCHECK} --project=${PROJECT_BINARY_DIR}/compile_commands.json
          --enable=warning,performance,portability --inline-suppr --error-exitcode=1 --quiet
          --suppressions-list=${PROJECT_SOURCE_DIR}/cmake/cppcheck_suppressions.txt
          -i${PROJECT_SOURCE_DIR}/tests)
file(GLOB scripts RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/scripts/*)
add_test(NAME style.shellcheck
  COMMAND ${SHELLCHECK} -x -P scripts ${scripts} .ci/run tests/prompt/press_key_in_window
          packaging/completions/uquarndiffmrg.bash tests/completions/complete.bash
          packaging/git/difftool packaging/git/mergetool packaging/git/tool.sh
          packaging/subversion/diff packaging/subversion/merge
          tests/package/debian_root.sh tests/package/in_debian tests/package/run
          packaging/debian/end_old_services.sh
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
file(GLOB pages RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.[1-8])
add_test(NAME style.mandoc
  COMMAND ${MANDOC} -T lint -W warning ${pages}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
set_tests_properties(style.cppcheck PROPERTIES TIMEOUT 600)
