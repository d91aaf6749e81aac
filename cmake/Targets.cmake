# How every target of this tree is compiled, and the one way to add one.

add_library(prismal_options INTERFACE)
target_compile_options(prismal_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wundef)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Warns of impossible overlaps when two strings are joined (GCC bug 105329).
  target_compile_options(prismal_options INTERFACE -Wno-restrict)
endif()
if(PRISMAL_WARNINGS_AS_ERRORS)
  target_compile_options(prismal_options INTERFACE -Werror)
endif()
if(PRISMAL_SANITIZE)
  target_compile_options(prismal_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(prismal_options INTERFACE -fsanitize=address,undefined)
endif()
if(PRISMAL_FUZZ)
  # The standard library's own checks find what lies inside an allocation, but outside its object.
  target_compile_definitions(prismal_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_compile_options(prismal_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(prismal_options INTERFACE -fsanitize=address,undefined)
endif()
if(PRISMAL_COVERAGE)
  target_compile_options(prismal_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(prismal_options INTERFACE --coverage)
  target_compile_definitions(prismal_options INTERFACE PRISMAL_COVERAGE)
endif()
include(cmake/Hardening.cmake)

# An object library: its objects go whole into whatever is linked from it, so that a platform symbol
# that only the dynamic library refers to is not dropped. It must be built from the targets that it
# names after DEPENDS and no other; their headers are what it may include.
function(prismal_component name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS;LIBRARIES")
  add_library(${name} OBJECT ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE prismal_options PUBLIC ${arg_DEPENDS} ${arg_LIBRARIES})
endfunction()

# A test program from tables: every component that it exercises goes after COMPONENTS.
function(prismal_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;COMPONENTS;LIBRARIES")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE prismal_options ${arg_COMPONENTS} ${arg_LIBRARIES}
    GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES)
endfunction()
