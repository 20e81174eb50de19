# Options of every target, and functions for the library and the test program of a folder.
add_library(spotrooster_options INTERFACE)
target_compile_features(spotrooster_options INTERFACE cxx_std_20)
target_include_directories(spotrooster_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(spotrooster_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2
  -Wconversion -Wsign-conversion -Wdouble-promotion -Wimplicit-fallthrough)
# Checks of the standard library: an index out of range ends the program.
target_compile_definitions(spotrooster_options INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
if(CMAKE_UNITY_BUILD)
  # Each unit includes its sources, so a test with a fixture in an anonymous namespace would cause a warning.
  target_compile_options(spotrooster_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(SPOTROOSTER_WERROR)
  target_compile_options(spotrooster_options INTERFACE -Werror)
endif()
if(SPOTROOSTER_HARDEN)
  # As Debian builds its packages; scripts/package checks the result.
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  target_compile_options(spotrooster_options INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection)
  target_link_options(spotrooster_options INTERFACE -Wl,-z,relro -Wl,-z,now)
endif()
if(SPOTROOSTER_SANITIZE)
  target_compile_options(spotrooster_options INTERFACE -fsanitize=${SPOTROOSTER_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(spotrooster_options INTERFACE -fsanitize=${SPOTROOSTER_SANITIZE})
  if(NOT SPOTROOSTER_FUZZ)
    # Half of the time to compile. The address sanitizer reports a null pointer too; the fuzz targets check all.
    target_compile_options(spotrooster_options INTERFACE -fno-sanitize=null,vptr,alignment)
  endif()
endif()
if(SPOTROOSTER_FUZZ)
  # Tracing comparisons too would double the time; the mutators already know the formats. Checks that end the program
  # are cheaper than checks that may continue.
  target_compile_options(spotrooster_options INTERFACE
    -fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp -fno-sanitize-recover=all)
endif()

# No implicit conversion between byte strings and QString: every literal states its kind.
add_library(spotrooster_qt_options INTERFACE)
target_compile_definitions(spotrooster_qt_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_USE_QSTRINGBUILDER QT_NO_KEYWORDS)

# spotrooster_library(name SOURCES file... [NO_QT] [LINK target...])
# One static library per folder. NO_QT: the folder does not use Qt.
function(spotrooster_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NO_QT" "" "SOURCES;LINK")
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC spotrooster_options ${arg_LINK})
  if(NOT arg_NO_QT)
    target_link_libraries(${name} PUBLIC spotrooster_qt_options)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON AUTOUIC ON)
  endif()
endfunction()

# spotrooster_tests(folder SOURCES file... [NO_QT] [LINK target...])
# One test program a folder, every test a CTest entry labelled with the folder. With a sanitizer each half of a program
# is one entry, because starting the process takes longer than most tests. NO_QT as above.
function(spotrooster_tests folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NO_QT" "" "SOURCES;LINK")
  string(REPLACE "/" "_" program "test_${folder}")
  add_executable(${program} ${arg_SOURCES})
  if(arg_NO_QT)
    add_dependencies(tests_without_qt ${program})
    target_link_libraries(${program} PRIVATE spotrooster_options ${arg_LINK} GTest::gtest_main)
  else()
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    target_link_libraries(${program} PRIVATE ${arg_LINK} spotrooster_test_main)
    if(NOT folder MATCHES "^platform/")
      target_link_libraries(${program} PRIVATE spotrooster_test_support)
    endif()
  endif()
  if(SPOTROOSTER_SANITIZE)
    foreach(half 0 1)
      add_test(NAME ${folder}.${half} COMMAND ${program} --gtest_brief=1)
      set_tests_properties(${folder}.${half} PROPERTIES LABELS ${folder} TIMEOUT 1500
                           ENVIRONMENT "GTEST_TOTAL_SHARDS=2;GTEST_SHARD_INDEX=${half}")
    endforeach()
  else()
    gtest_discover_tests(${program} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                         PROPERTIES LABELS ${folder} TIMEOUT 300)
  endif()
endfunction()
# The tests for the thread sanitizer: the distribution's Qt is built without it.
add_custom_target(tests_without_qt)

# spotrooster_server_run(folder [WITHOUT test...])
# The folder's test program again, with the server databases on a PostgreSQL server that it starts itself: one CTest
# entry, because starting the server takes longer than most tests. WITHOUT: tests of features of a database file.
function(spotrooster_server_run folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "WITHOUT")
  string(REPLACE "/" "_" program "test_${folder}")
  list(JOIN arg_WITHOUT ":" without)
  add_test(NAME "${folder}.server" COMMAND ${program} "--gtest_filter=-${without}")
  set_tests_properties("${folder}.server" PROPERTIES LABELS "${folder};server" TIMEOUT 600 SKIP_RETURN_CODE 77
                       ENVIRONMENT SPOTROOSTER_TEST_SERVER=1)
endfunction()

# spotrooster_server_tests(folder SOURCES file... [LINK target...])
# A test program that needs a PostgreSQL server: also one CTest entry.
function(spotrooster_server_tests folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  string(REPLACE "/" "_" program "test_${folder}")
  add_executable(${program} ${arg_SOURCES})
  set_target_properties(${program} PROPERTIES AUTOMOC ON)
  target_link_libraries(${program} PRIVATE ${arg_LINK} spotrooster_test_main PkgConfig::LIBPQ)
  add_test(NAME "${folder}" COMMAND ${program})
  set_tests_properties("${folder}" PROPERTIES LABELS "${folder};server" TIMEOUT 600 SKIP_RETURN_CODE 77
                       ENVIRONMENT SPOTROOSTER_TEST_SERVER=1)
endfunction()
include(GoogleTest)
