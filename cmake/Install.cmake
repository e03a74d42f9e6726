# What `cmake --install` puts where: library, headers, schemas, command, and the two ways
# by which other builds find them (CMake package, pkg-config).
include(CMakePackageConfigHelpers)

# The headers by which the engine is entered; what they include is installed with them.
set(caretwell_doors
  host/HTMReg.h host/Nibapi.h host/Platform.h
  markup/MLParserUtils.h markup/MLBufferProducer.h
  insight/MLCodeInsight.h stylesheet/CSSLanguage.h
  parser/MLParser.h symbols/FileToSchemaMapper.h tagmodel/AttributeEditors.h)

function(caretwell_install_headers)
  set(waiting ${caretwell_doors})
  set(done)
  while(waiting)
    list(POP_FRONT waiting header)
    if(header IN_LIST done)
      continue()
    endif()
    list(APPEND done ${header})
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${CMAKE_SOURCE_DIR}/src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/caretwell/${folder})
    file(STRINGS ${CMAKE_SOURCE_DIR}/src/${header} lines REGEX "^#include \"")
    list(TRANSFORM lines REPLACE "^#include \"([^\"]+)\".*" "\\1")
    list(APPEND waiting ${lines})
  endwhile()
endfunction()
caretwell_install_headers()

set(caretwell_schemas ${CMAKE_INSTALL_DATADIR}/caretwell/schemas)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/schemas/ DESTINATION ${caretwell_schemas})
install(TARGETS caretwell EXPORT CaretwellTargets)
install(TARGETS caretwell_cli)

set(caretwell_package ${CMAKE_INSTALL_LIBDIR}/cmake/Caretwell)
install(EXPORT CaretwellTargets NAMESPACE Caretwell:: DESTINATION ${caretwell_package})
get_target_property(caretwell_type caretwell TYPE)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/CaretwellConfig.cmake.in
  ${CMAKE_BINARY_DIR}/CaretwellConfig.cmake
  INSTALL_DESTINATION ${caretwell_package} PATH_VARS caretwell_schemas)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/CaretwellConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/CaretwellConfig.cmake ${CMAKE_BINARY_DIR}/CaretwellConfigVersion.cmake
  DESTINATION ${caretwell_package})

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
configure_file(${CMAKE_SOURCE_DIR}/cmake/caretwell.pc.in ${CMAKE_BINARY_DIR}/caretwell.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/caretwell.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
