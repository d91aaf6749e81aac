# A Debian package of what is installed: `cpack -G DEB`, or scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME prismal)
set(CPACK_PACKAGE_VENDOR Prismal)
# Nobody reads this address; a package must have one.
set(CPACK_PACKAGE_CONTACT "Prismal <prismal@prismal.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "draw keyboard themes on the desk")
set(CPACK_PACKAGE_DESCRIPTION
  "Themes for the system keyboard of a phone or tablet, drawn on a real
keyboard on the desk by the very library that the device loads, with what it
takes to write and test them.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
  GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# What the program and its library are linked with is found by dpkg-shlibdeps; the font is opened by
# its path, which nothing but this tells.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The second keeps the cache of installed fonts: without one every program looks through all of them,
# and complains that it can't keep what it has found.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-inter, fontconfig")
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/without_scripts.cmake)
include(CPack)
