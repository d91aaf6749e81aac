# Takes out of each package the scripts that CPack writes for a shared library: ours is no linker's
# business, the program finds it from where it lies itself. cpack runs this when packages are made.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree "${CPACK_TEMPORARY_DIRECTORY}-without-scripts")
  file(REMOVE_RECURSE "${tree}")
  execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
  execute_process(COMMAND dpkg-deb --root-owner-group --build "${tree}" "${package}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${tree}")
endforeach()
