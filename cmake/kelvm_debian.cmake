# Run by cpack over what goes into the packages: what Debian's policy wants beside the installed files. Manual pages are
# compressed, each package has its copyright and changelog, files have ordinary permissions.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()

file(READ ${CPACK_RESOURCE_FILE_LICENSE} license)
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n([^\n])" "\n \\1" license "${license}")
string(REGEX REPLACE "^MIT License\n \\.\n [^\n]*\n \\.\n" "" license "${license}")
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/copyright
     "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: kelvm

Files: *
Copyright: 2026 The kelvm developers
License: Expat

License: Expat
${license}")
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/changelog
     "kelvm (${CPACK_PACKAGE_VERSION}) stable; urgency=medium

  * Release ${CPACK_PACKAGE_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
execute_process(COMMAND gzip -9nf ${CPACK_TEMPORARY_DIRECTORY}/changelog COMMAND_ERROR_IS_FATAL ANY)

foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(documents ${root}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(COPY ${CPACK_TEMPORARY_DIRECTORY}/copyright ${CPACK_TEMPORARY_DIRECTORY}/changelog.gz DESTINATION ${documents})
  # Links to pages become links to compressed pages.
  file(GLOB pages ${root}/share/man/man?/*.[1-9])
  foreach(page ${pages})
    if(IS_SYMLINK ${page})
      file(READ_SYMLINK ${page} target)
      file(REMOVE ${page})
      file(CREATE_LINK ${target}.gz ${page}.gz SYMBOLIC)
    else()
      execute_process(COMMAND gzip -9n ${page} COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endforeach()
  execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(REMOVE ${CPACK_TEMPORARY_DIRECTORY}/copyright ${CPACK_TEMPORARY_DIRECTORY}/changelog.gz)
