# What `cmake --install` puts where: library, headers, schemas, command, and the two ways
# by which other builds find them (CMake package, pkg-config). Components: Runtime (library and
# schemas), Development, Command.
include(CMakePackageConfigHelpers)

foreach(header ${caretwell_public_headers})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/caretwell/${folder}
    COMPONENT Development)
endforeach()

set(caretwell_schemas ${CMAKE_INSTALL_DATADIR}/caretwell/schemas)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/schemas/ DESTINATION ${caretwell_schemas} COMPONENT Runtime)
install(TARGETS caretwell EXPORT CaretwellTargets
  LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE COMPONENT Development)
if(CARETWELL_CLI)
  install(TARGETS caretwell_cli RUNTIME COMPONENT Command)
endif()

set(caretwell_docs ${CMAKE_INSTALL_DATADIR}/doc/caretwell)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${caretwell_docs} COMPONENT Runtime)
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${caretwell_docs} COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples DESTINATION ${caretwell_docs} COMPONENT Development
  PATTERN Doxyfile EXCLUDE)

set(caretwell_package ${CMAKE_INSTALL_LIBDIR}/cmake/Caretwell)
install(EXPORT CaretwellTargets NAMESPACE Caretwell:: DESTINATION ${caretwell_package} COMPONENT Development)
get_target_property(caretwell_type caretwell TYPE)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/CaretwellConfig.cmake.in
  ${PROJECT_BINARY_DIR}/CaretwellConfig.cmake
  INSTALL_DESTINATION ${caretwell_package} PATH_VARS caretwell_schemas)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CaretwellConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CaretwellConfig.cmake ${PROJECT_BINARY_DIR}/CaretwellConfigVersion.cmake
  DESTINATION ${caretwell_package} COMPONENT Development)

# A static library hands on what it needs itself; a shared one has it inside.
set(caretwell_needs pugixml)
if(Fontconfig_FOUND)
  string(APPEND caretwell_needs ", fontconfig")
endif()
if(caretwell_type STREQUAL SHARED_LIBRARY)
  set(caretwell_requires "Requires.private: ${caretwell_needs}")
else()
  set(caretwell_requires "Requires: ${caretwell_needs}")
endif()
file(RELATIVE_PATH caretwell_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/caretwell.pc.in ${PROJECT_BINARY_DIR}/caretwell.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/caretwell.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
