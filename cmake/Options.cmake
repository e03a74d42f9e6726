# Options of the build and what every target of ours is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(CARETWELL_TESTS "Build the tests" ON)
option(CARETWELL_BENCH "Build the benchmarks" OFF)
option(CARETWELL_FUZZ "Build the fuzz targets (clang)" OFF)
option(CARETWELL_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
option(BUILD_SHARED_LIBS "Build the library as a shared one" OFF)
option(CARETWELL_FONTCONFIG "List the machine's fonts through fontconfig" ON)

# The command finds its schemas beside its own folder, in the build tree as installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/schemas ${CMAKE_BINARY_DIR}/schemas SYMBOLIC)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

include(GNUInstallDirs)
find_package(pugixml REQUIRED)
find_package(utf8cpp REQUIRED)
if(CARETWELL_FONTCONFIG)
  find_package(Fontconfig)
endif()

add_library(caretwell_flags INTERFACE)
target_compile_options(caretwell_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string's own concatenation where there are none (PR 105329).
  target_compile_options(caretwell_flags INTERFACE -Wno-restrict)
  # At link time it also sees writes behind the end of strings that are never made.
  target_link_options(caretwell_flags INTERFACE -Wno-stringop-overflow)
endif()
if(CARETWELL_SANITIZE)
  target_compile_options(caretwell_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(caretwell_flags INTERFACE -fsanitize=address,undefined)
endif()
if(CARETWELL_FUZZ)
  target_compile_options(caretwell_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# A target lets out only what is marked with CARETWELL_API.
function(caretwell_hide_names target)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# One directory, one target; it may include only what it links.
function(caretwell_library name)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${name} OBJECT ${sources})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE caretwell_flags ${ARG_PRIVATE_LINKS})
  caretwell_hide_names(${name})
endfunction()

# One test program for each folder of tests/; it links what it is given and GoogleTest.
function(caretwell_test folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*.cpp)
  set(name test_${folder})
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE CARETWELL_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARGN} caretwell_flags GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()

# A fuzz target is one file of fuzz/.
function(caretwell_fuzz name)
  add_executable(fuzz_${name} ${CMAKE_SOURCE_DIR}/fuzz/${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${ARGN} caretwell_flags)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endfunction()
