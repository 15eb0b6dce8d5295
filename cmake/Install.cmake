# The installed tree: on Linux that of the system, on Windows one folder to unpack anywhere. The module is
# loaded by its path and no library to link with, so it has a folder of its own on Linux.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(config ${CMAKE_INSTALL_LIBDIR}/cmake/Lumidex)
if(WIN32)
  set(module ${CMAKE_INSTALL_BINDIR})
  set(documents .)
  set(python python)
else()
  set(module ${CMAKE_INSTALL_LIBDIR}/lumidex)
  set(documents ${CMAKE_INSTALL_DATADIR}/doc/lumidex)
  set(python ${CMAKE_INSTALL_DATADIR}/lumidex/python)
endif()

install(TARGETS lumidex_headers EXPORT Lumidex)
install(TARGETS LumidexMgr EXPORT Lumidex LIBRARY DESTINATION ${module})
install(TARGETS lumidex EXPORT Lumidex RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/lumidex DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT Lumidex NAMESPACE Lumidex:: FILE LumidexTargets.cmake DESTINATION ${config})
set(manifest ${module}/LumidexMgr.manifest)
configure_package_config_file(cmake/LumidexConfig.cmake.in
  ${CMAKE_BINARY_DIR}/package/LumidexConfig.cmake
  INSTALL_DESTINATION ${config} PATH_VARS manifest)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/LumidexConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/LumidexConfig.cmake
  ${CMAKE_BINARY_DIR}/package/LumidexConfigVersion.cmake DESTINATION ${config})

install(FILES README.md CHANGELOG.md DESTINATION ${documents})
install(FILES docs/hosting.md docs/reading.md docs/writing.md docs/show.schema.json
  DESTINATION ${documents}/docs)
install(DIRECTORY examples DESTINATION ${documents})
install(FILES bindings/python/lumidex.py DESTINATION ${python})

if(WIN32)
  install(FILES ${CMAKE_BINARY_DIR}/LumidexMgr.manifest DESTINATION ${module})
  install(FILES LICENSE DESTINATION ${documents} RENAME LICENSE.txt)
else()
  install(FILES LICENSE DESTINATION ${documents} RENAME copyright)
  install(FILES docs/lumidex.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  set(completions tools/lumidex/completions)
  install(FILES ${completions}/lumidex.bash RENAME lumidex
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  # The folder of Debian's zsh for what packages bring.
  install(FILES ${completions}/_lumidex DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
endif()
if(MINGW)
  install(FILES ${CMAKE_BINARY_DIR}/LumidexMgr.dll.debug DESTINATION symbols)
endif()
