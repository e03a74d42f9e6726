# Options of the build and what every target of ours is compiled with. Inside of another
# project only the library is built, and nothing of that project's is touched.
option(CARETWELL_CLI "Build the command caretwell" ${PROJECT_IS_TOP_LEVEL})
option(CARETWELL_EXAMPLES "Build the examples" ${PROJECT_IS_TOP_LEVEL})
option(CARETWELL_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(CARETWELL_INSTALL "Make the rules of cmake --install" ${PROJECT_IS_TOP_LEVEL})
option(CARETWELL_CCACHE "Compile through ccache where there is one" ${PROJECT_IS_TOP_LEVEL})
option(CARETWELL_WERROR "Take warnings as errors" OFF)
option(CARETWELL_BENCH "Build the benchmarks" OFF)
option(CARETWELL_FUZZ "Build the fuzz targets (clang)" OFF)
option(CARETWELL_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
option(CARETWELL_FONTCONFIG "List the machine's fonts through fontconfig" ON)
if(PROJECT_IS_TOP_LEVEL)
  option(BUILD_SHARED_LIBS "Build the library as a shared one" OFF)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT DEFINED CMAKE_POSITION_INDEPENDENT_CODE)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

# The command finds its schemas beside its own folder, in the build tree as installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/schemas ${PROJECT_BINARY_DIR}/schemas SYMBOLIC)
# As the package calls the folder, for a project that has the sources in its own tree.
set(Caretwell_SCHEMA_DIR ${PROJECT_SOURCE_DIR}/schemas CACHE INTERNAL "The schema folder")

if(CARETWELL_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(CARETWELL_CCACHE_PROGRAM ccache)
  if(CARETWELL_CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CARETWELL_CCACHE_PROGRAM})
  endif()
endif()

include(GNUInstallDirs)
find_package(pugixml REQUIRED)
find_package(utf8cpp REQUIRED)
if(CARETWELL_FONTCONFIG)
  find_package(Fontconfig)
endif()

add_library(caretwell_flags INTERFACE)
target_compile_options(caretwell_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(CARETWELL_WERROR)
  target_compile_options(caretwell_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string's own concatenation where there are none (PR 105329).
  target_compile_options(caretwell_flags INTERFACE -Wno-restrict)
  # At link time it also sees writes beyond the end of strings that are never made.
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

# One test program for each folder of tests/; it links what it is given and GoogleTest.
function(caretwell_test folder)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
  set(name test_${folder})
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE CARETWELL_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARGN} caretwell_flags GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()

# A fuzz target is one file of fuzz/.
function(caretwell_fuzz name)
  add_executable(fuzz_${name} ${PROJECT_SOURCE_DIR}/fuzz/${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${ARGN} caretwell_flags)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endfunction()
