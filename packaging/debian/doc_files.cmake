# What Debian asks of a package's papers: run over the tree that goes into the package.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(papers ${share}/doc/tresmor)
foreach(folder ${CPACK_TRESMOR_DEBIAN})
  foreach(name changelog copyright)
    if(EXISTS ${folder}/${name})
      file(COPY ${folder}/${name} DESTINATION ${papers}
           FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endif()
  endforeach()
endforeach()
file(REMOVE ${papers}/LICENSE)  # the copyright file has it
file(GLOB compressed ${share}/man/man1/*.1 ${papers}/changelog)
execute_process(COMMAND gzip -9nf ${compressed} COMMAND_ERROR_IS_FATAL ANY)
