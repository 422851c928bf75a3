# Settings of every target of ours, and the function that makes one subsystem ("room").

find_program(CCACHE ccache)
if(CCACHE)
  # Paths count from here, so that a checkout elsewhere is built from the cache of this one.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(tavrix_settings INTERFACE)
target_compile_features(tavrix_settings INTERFACE cxx_std_20)
target_compile_options(tavrix_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees an uninitialised std::optional<std::string> where there is none.
  target_compile_options(tavrix_settings INTERFACE
    -Wno-maybe-uninitialized -Wno-restrict -Wno-dangling-reference)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tavrix_settings INTERFACE -Wno-error=stringop-overflow)
  endif()
endif()
target_include_directories(tavrix_settings INTERFACE
  ${CMAKE_SOURCE_DIR}/TavrixKit ${CMAKE_SOURCE_DIR}/App/Sources/Tavrix)

if(TAVRIX_SANITIZERS)
  add_compile_options(-fsanitize=${TAVRIX_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${TAVRIX_SANITIZERS})
endif()
if(TAVRIX_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Tells those of the test sources, which read files of the project, where these lie; the others are
# the same for the compiler wherever the project is.
function(tavrix_tell_folders)
  foreach(source IN LISTS ARGN)
    file(STRINGS ${source} uses REGEX "TAVRIX_(DOCS|TEST_DATA|RESOURCES)" LIMIT_COUNT 1)
    if(uses)
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS
        TAVRIX_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/tests" TAVRIX_DOCS="${CMAKE_SOURCE_DIR}/docs"
        TAVRIX_RESOURCES="${CMAKE_SOURCE_DIR}/App/Resources")
    endif()
  endforeach()
endfunction()

# tavrix_room(NAME [PURE] SOURCES … LINKS … [PRIVATE_LINKS …] [TESTS …] [TEST_LINKS …])
# makes the library NAME of the current folder and, from tests/, the program NAME_tests. What is PURE
# has no threads, so that the thread sanitizer has nothing to see in its tests.
function(tavrix_room name)
  cmake_parse_arguments(ROOM "PURE" "" "SOURCES;LINKS;PRIVATE_LINKS;TESTS;TEST_LINKS" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC tavrix_settings ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  if(ROOM_PURE AND TAVRIX_SANITIZERS STREQUAL "thread")
    set(ROOM_TESTS)
  endif()
  if(TAVRIX_TESTS AND ROOM_TESTS)
    list(TRANSFORM ROOM_TESTS PREPEND tests/)
    add_executable(${name}_tests ${ROOM_TESTS})
    target_link_libraries(${name}_tests PRIVATE ${name} ${ROOM_TEST_LINKS} GTest::gmock_main)
    tavrix_tell_folders(${ROOM_TESTS})
    include(GoogleTest)
    gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
  endif()
endfunction()
