# Who sees whom. Each room (a folder of src/ or hosts/) has a root of its own, a folder that
# holds nothing but a link to the room, and a target has the roots of what it links on its
# include path, and no others: an include that runs up finds no file.
#
#     roots/markup/markup -> src/markup              #include "markup/Text.h"
#     roots/markup/caretwell/markup -> src/markup    the same as public headers name each other
file(REMOVE_RECURSE ${PROJECT_BINARY_DIR}/roots ${PROJECT_BINARY_DIR}/include)

# Makes the root NAME with the whole folder, or with the headers given: caretwell_root(NAME FOLDER [HEADER...])
function(caretwell_root name folder)
  get_filename_component(room ${folder} NAME)
  foreach(place ${name} ${name}/caretwell)
    set(place ${PROJECT_BINARY_DIR}/roots/${place})
    if(ARGN)
      file(MAKE_DIRECTORY ${place}/${room})
      foreach(header ${ARGN})
        file(CREATE_LINK ${folder}/${header} ${place}/${room}/${header} SYMBOLIC)
      endforeach()
    else()
      file(MAKE_DIRECTORY ${place})
      file(CREATE_LINK ${folder} ${place}/${room} SYMBOLIC)
    endif()
  endforeach()
endfunction()

# The room of the current folder:
#     caretwell_library(NAME [LINKS TARGET...] [PRIVATE_LINKS TARGET...] [SEES ROOM...])
# SEES names rooms that are seen without being linked: those of the same unit.
function(caretwell_library name)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS;SEES" ${ARGN})
  get_filename_component(room ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  caretwell_root(${room} ${CMAKE_CURRENT_SOURCE_DIR})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} OBJECT ${sources})
  list(TRANSFORM ARG_SEES PREPEND ${PROJECT_BINARY_DIR}/roots/)
  target_include_directories(${name} PUBLIC ${PROJECT_BINARY_DIR}/roots/${room} ${ARG_SEES})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE caretwell_flags ${ARG_PRIVATE_LINKS})
  caretwell_hide_names(${name})
endfunction()

# The headers by which the engine is entered, and what they include.
set(caretwell_public_headers)
set(waiting
  package/HTMReg.h host/Nibapi.h host/Platform.h
  markup/MLParserUtils.h markup/MLBufferProducer.h
  grammar/GrammarAnswer.h insight/MLCodeInsight.h stylesheet/CSSLanguage.h typing/TypingSession.h
  symbols/FileToSchemaMapper.h tagmodel/AttributeEditors.h)
while(waiting)
  list(POP_FRONT waiting header)
  if(header IN_LIST caretwell_public_headers)
    continue()
  endif()
  list(APPEND caretwell_public_headers ${header})
  set(file ${PROJECT_SOURCE_DIR}/src/${header})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(STRINGS ${file} lines REGEX "^#include \"")
  foreach(line ${lines})
    # Anything else would find a header of the same name in a stranger's project.
    if(NOT line MATCHES "^#include \"caretwell/([^\"]+)\"")
      message(FATAL_ERROR "src/${header} is a public header and must name others as \"caretwell/...\": ${line}")
    endif()
    list(APPEND waiting ${CMAKE_MATCH_1})
  endforeach()
endwhile()

# The package as strangers see it, before it is installed: <caretwell/host/Nibapi.h>.
add_library(caretwell_doors INTERFACE)
target_include_directories(caretwell_doors INTERFACE ${PROJECT_BINARY_DIR}/include)
foreach(header ${caretwell_public_headers})
  get_filename_component(folder ${PROJECT_BINARY_DIR}/include/caretwell/${header} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${header} ${PROJECT_BINARY_DIR}/include/caretwell/${header} SYMBOLIC)
endforeach()
