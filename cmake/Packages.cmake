# `cpack` in a build folder makes the package of its system: a ZIP for Windows, a .deb for Linux. What is in
# them is what `cmake --install` installs. SOURCE_DATE_EPOCH sets the times in them.
set(CPACK_PACKAGE_NAME lumidex)
set(CPACK_PACKAGE_VENDOR "The LumidexMgr authors")
set(CPACK_PACKAGE_CONTACT "The LumidexMgr authors <noreply@lumidex.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
  GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME lumidex-${PROJECT_VERSION}-windows-x64)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_STRIP_FILES ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  string(CONCAT CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The module LumidexMgr.so for hosts, with its headers, and the command-line tool lumidex, which\n"
    "shows and writes EXIF, XMP and IPTC of photographs.")
endif()
include(CPack)
