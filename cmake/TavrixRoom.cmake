# Settings of every target of ours, and the function that makes one subsystem ("room").

find_program(CCACHE ccache)
if(CCACHE)
  # Paths are relative to the checkout, so that another checkout is built from the same cache. The
  # sloppiness is what the cache needs to accept precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_library(tavrix_flags INTERFACE)
target_compile_features(tavrix_flags INTERFACE cxx_std_20)
target_compile_options(tavrix_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees an uninitialised std::optional<std::string> where there is none.
  target_compile_options(tavrix_flags INTERFACE
    -Wno-maybe-uninitialized -Wno-restrict -Wno-dangling-reference)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tavrix_flags INTERFACE -Wno-error=stringop-overflow -Wno-stringop-overread -Wno-array-bounds)
  endif()
else()
  # The stable sort of g++ 12's standard library calls a function that the library itself marks as
  # deprecated. g++ does not warn about its own headers, clang does.
  target_compile_options(tavrix_flags INTERFACE -Wno-deprecated-declarations)
endif()
target_include_directories(tavrix_flags INTERFACE
  ${CMAKE_SOURCE_DIR}/TavrixKit ${CMAKE_SOURCE_DIR}/App/Sources/Tavrix)

if(TAVRIX_SANITIZERS)
  add_compile_options(-fsanitize=${TAVRIX_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${TAVRIX_SANITIZERS})
endif()
if(TAVRIX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The many test programs are linked five times as fast by another linker than the default one.
if(TAVRIX_FAST_BUILD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
  include(CheckLinkerFlag)
  check_linker_flag(CXX -fuse-ld=mold TAVRIX_HAS_MOLD)
  if(TAVRIX_HAS_MOLD)
    add_link_options(-fuse-ld=mold)
  endif()
endif()

# Tests compile twice as fast without optimisation, and what they test is optimised all the same.
set(test_options $<$<CONFIG:Debug>:-O0>)

# The standard library and the two libraries in our public headers cost more to parse than most
# sources cost to compile, so they are parsed once for all rooms, and the sources of a room are
# compiled a few at a time. A source must not rely on either: it includes what it uses, and the
# preset "separate" compiles each on its own.
if(TAVRIX_FAST_BUILD)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The first is for ccache; the second, as an anonymous namespace may be included here.
    add_compile_options(-fpch-preprocess -Wno-subobject-linkage)
  else()
    # clang takes a member for the shadow of a name in the anonymous namespace of a source joined
    # before it.
    target_compile_options(tavrix_flags INTERFACE -Wno-shadow)
  endif()
  set(common_headers <algorithm> <array> <chrono> <condition_variable> <cstdint> <deque> <filesystem>
    <functional> <future> <map> <memory> <mutex> <optional> <ranges> <set> <span> <stop_token>
    <string> <string_view> <thread> <tuple> <utility> <variant> <vector> <fmt/format.h>
    <absl/container/flat_hash_map.h> <absl/container/flat_hash_set.h>)
  file(WRITE ${CMAKE_BINARY_DIR}/no_source.cpp "")
  foreach(kind common test)
    add_library(${kind}_headers OBJECT ${CMAKE_BINARY_DIR}/no_source.cpp)
    target_link_libraries(${kind}_headers PRIVATE
      tavrix_flags Threads::Threads fmt::fmt absl::flat_hash_map absl::flat_hash_set)
    target_precompile_headers(${kind}_headers PRIVATE ${common_headers})
  endforeach()
  if(TAVRIX_TESTS)
    target_compile_options(test_headers PRIVATE ${test_options})
    target_link_libraries(test_headers PRIVATE GTest::gmock)
    target_precompile_headers(test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
endif()

# tavrix_join_sources(RESULT NAME COUNT SOURCE …) stores in RESULT sources NAME_0.cpp, NAME_1.cpp, … that
# include the given ones of the current folder, COUNT each. Unlike CMake's own unity builds they name no
# absolute path, so that the compiler cache serves every checkout. A source with the property
# SKIP_UNITY_BUILD_INCLUSION stays on its own.
function(tavrix_join_sources result name count)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR}
    OUTPUT_VARIABLE folder)
  string(REGEX REPLACE "^(TavrixKit|App/Sources/Tavrix)/" "" folder ${folder})
  set(sources)
  set(joined)
  set(index 0)
  foreach(source IN LISTS ARGN)
    get_source_file_property(is_alone ${source} SKIP_UNITY_BUILD_INCLUSION)
    if(is_alone)
      list(APPEND sources ${source})
      continue()
    endif()
    math(EXPR number "${index} / ${count}")
    math(EXPR index "${index} + 1")
    string(APPEND text_${number} "#include \"${folder}/${source}\"\n")
    list(APPEND joined ${number})
  endforeach()
  list(REMOVE_DUPLICATES joined)
  foreach(number IN LISTS joined)
    set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}_${number}.cpp)
    file(CONFIGURE OUTPUT ${file} CONTENT "${text_${number}}" @ONLY)
    list(APPEND sources ${file})
  endforeach()
  set(${result} ${sources} PARENT_SCOPE)
endfunction()

# Lets a target use the headers of the kind ("common" or "test") that are parsed once.
function(tavrix_share_headers target kind)
  if(TAVRIX_FAST_BUILD)
    target_precompile_headers(${target} REUSE_FROM ${kind}_headers)
  endif()
endfunction()

# tavrix_prepare_tests(RESULT SOURCE …) stores in RESULT the sources of a test program, joined if the
# build is fast. The folders of the project are defined only for those that read files from them; the
# others are the same for the compiler wherever the project is.
function(tavrix_prepare_tests result)
  set(plain)
  set(with_folders)
  foreach(source IN LISTS ARGN)
    file(STRINGS ${source} uses REGEX "TAVRIX_(DOCS|TEST_DATA|RESOURCES|CONVERT_PROGRAM)" LIMIT_COUNT 1)
    if(uses)
      list(APPEND with_folders ${source})
    else()
      list(APPEND plain ${source})
    endif()
  endforeach()
  if(TAVRIX_FAST_BUILD)
    tavrix_join_sources(plain joined_tests 6 ${plain})
    tavrix_join_sources(with_folders joined_tests_with_folders 6 ${with_folders})
    # g++, too, takes a local name for the shadow of one in a source joined before it.
    set_property(SOURCE ${plain} ${with_folders} APPEND PROPERTY COMPILE_OPTIONS -Wno-shadow)
  endif()
  set_property(SOURCE ${with_folders} APPEND PROPERTY COMPILE_DEFINITIONS
    TAVRIX_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/tests" TAVRIX_DOCS="${CMAKE_SOURCE_DIR}/docs"
    TAVRIX_RESOURCES="${CMAKE_SOURCE_DIR}/App/Resources"
    TAVRIX_CONVERT_PROGRAM="${CMAKE_BINARY_DIR}/tavrix-convert")
  set(${result} ${plain} ${with_folders} PARENT_SCOPE)
endfunction()

# tavrix_add_tests(TARGET [VARIABLE=VALUE …]) has ctest run the tests of a program, with these variables
# in the environment. Each test has a process of its own, so that one cannot spoil another. With
# sanitizers a process takes longer to start than most tests to run; there a process runs a quarter of
# them.
function(tavrix_add_tests target)
  if(NOT TAVRIX_SANITIZERS)
    include(GoogleTest)
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST
      PROPERTIES TIMEOUT 300 ENVIRONMENT "${ARGN}")
    return()
  endif()
  foreach(shard RANGE 3)
    add_test(NAME ${target}.${shard} COMMAND ${target})
    set_tests_properties(${target}.${shard} PROPERTIES TIMEOUT 900
      ENVIRONMENT "GTEST_TOTAL_SHARDS=4;GTEST_SHARD_INDEX=${shard};${ARGN}")
  endforeach()
endfunction()

# tavrix_room(NAME [PURE] SOURCES … LINKS … [PRIVATE_LINKS …] [TESTS …] [TEST_LINKS …])
# makes the library NAME of the current folder and, from tests/, the program NAME_tests. What is PURE
# has no threads, so that the thread sanitizer has nothing to see in its tests.
function(tavrix_room name)
  cmake_parse_arguments(ROOM "PURE" "" "SOURCES;LINKS;PRIVATE_LINKS;TESTS;TEST_LINKS" ${ARGN})
  if(TAVRIX_FAST_BUILD)
    tavrix_join_sources(ROOM_SOURCES joined 12 ${ROOM_SOURCES})
  endif()
  add_library(${name} STATIC ${ROOM_SOURCES})
  tavrix_share_headers(${name} common)
  target_link_libraries(${name} PUBLIC tavrix_flags ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  if(ROOM_PURE AND TAVRIX_SANITIZERS STREQUAL "thread")
    set(ROOM_TESTS)
  endif()
  if(TAVRIX_TESTS AND ROOM_TESTS)
    list(TRANSFORM ROOM_TESTS PREPEND tests/)
    tavrix_prepare_tests(ROOM_TESTS ${ROOM_TESTS})
    add_executable(${name}_tests ${ROOM_TESTS})
    target_compile_options(${name}_tests PRIVATE ${test_options})
    tavrix_share_headers(${name}_tests test)
    target_link_libraries(${name}_tests PRIVATE ${name} ${ROOM_TEST_LINKS} GTest::gmock_main)
    tavrix_add_tests(${name}_tests)
  endif()
endfunction()
