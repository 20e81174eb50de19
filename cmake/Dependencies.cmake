# The libraries that the program uses, all from the distribution. Each is an imported target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)  # uic and moc need no built library
set(CMAKE_GLOBAL_AUTOGEN_TARGET ON)  # target "autogen": runs uic and moc, whose output clang-tidy needs

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Svg Concurrent)
find_package(SQLite3 3.38 REQUIRED)
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(MPG123 REQUIRED IMPORTED_TARGET libmpg123)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(PORTAUDIO REQUIRED IMPORTED_TARGET portaudio-2.0)
pkg_check_modules(SAMPLERATE REQUIRED IMPORTED_TARGET samplerate)
pkg_check_modules(LIBPQ REQUIRED IMPORTED_TARGET libpq)
pkg_check_modules(EBUR128 REQUIRED IMPORTED_TARGET libebur128)
find_path(SIMPLEINI_INCLUDE_DIR SimpleIni.h REQUIRED)
if(SPOTROOSTER_TESTS)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
  find_package(GTest REQUIRED)
endif()
