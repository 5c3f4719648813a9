# Run by cpack between the installation into its staging folder and the packing. Moves what only the
# system's own folders make known from the product tree to there, adds the links in /usr/bin, and
# what Debian asks of every package.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()

set(stage ${CPACK_TEMPORARY_DIRECTORY})
set(product ${stage}${CPACK_PACKAGING_INSTALL_PREFIX})
set(documents ${stage}/usr/share/doc/${CPACK_PACKAGE_NAME})

function(move_to_system folder system_folder)
  if(NOT EXISTS ${product}/${folder})
    return()
  endif()
  file(COPY ${product}/${folder}/ DESTINATION ${stage}/usr/${system_folder})
  file(REMOVE_RECURSE ${product}/${folder})
  cmake_path(GET folder PARENT_PATH parent)
  execute_process(COMMAND rmdir --parents --ignore-fail-on-non-empty ${parent}
    WORKING_DIRECTORY ${product} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(compress)
  execute_process(COMMAND gzip --best --no-name ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(folder IN ITEMS applications bash-completion fish man)
  move_to_system(share/${folder} share/${folder})
endforeach()
move_to_system(share/zsh/site-functions share/zsh/vendor-completions)
move_to_system(share/doc/quarnfold share/doc/${CPACK_PACKAGE_NAME})

# The programs find each other by where their real files are. Nobody calls the viewer but the service.
file(MAKE_DIRECTORY ${stage}/usr/bin)
file(GLOB programs RELATIVE ${product}/bin ${product}/bin/*)
list(REMOVE_ITEM programs quarnview)
foreach(program IN LISTS programs)
  file(CREATE_LINK ${CPACK_PACKAGING_INSTALL_PREFIX}/bin/${program} ${stage}/usr/bin/${program}
    SYMBOLIC)
endforeach()

file(GLOB pages ${stage}/usr/share/man/man*/*)
compress(${pages})
file(RENAME ${documents}/LICENSE ${documents}/copyright)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/changelog DESTINATION ${documents}
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
compress(${documents}/changelog)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/lintian-overrides
  DESTINATION ${stage}/usr/share/lintian/overrides
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(RENAME ${stage}/usr/share/lintian/overrides/lintian-overrides
  ${stage}/usr/share/lintian/overrides/${CPACK_PACKAGE_NAME})
