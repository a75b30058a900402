# Runs on the files of the packages before they are packed: manual pages and changelogs are compressed, as Debian has them.
file(GLOB_RECURSE texts ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man1/*.1 ${CPACK_TEMPORARY_DIRECTORY}/*/changelog
  ${CPACK_TEMPORARY_DIRECTORY}/*/NEWS)
foreach(text IN LISTS texts)
  execute_process(COMMAND gzip -9 -n -f ${text} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
