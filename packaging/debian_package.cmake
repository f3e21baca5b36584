# Packs the Debian packages of CPack again: they carry the umask and the number of the user who packs, in the modes of
# their folders and in their own heads. With SOURCE_DATE_EPOCH set they are then the same whoever makes them.
foreach(package ${CPACK_PACKAGE_FILES})
  set(content ${package}.content)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND find ${content} -type d -exec chmod 755 {} + COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND dpkg-deb --root-owner-group --build ${content} ${package}
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${content})
endforeach()
