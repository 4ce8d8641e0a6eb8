# Builds for the kind of machine that URA_TRIPLE names, as g++ does: i686-linux-gnu, aarch64-linux-gnu,
# arm-linux-gnueabihf. The presets i386, arm64 and armhf set it.
#
# Debian puts the triple into the name of every compiler, the machine's own included. So this file also serves on a
# machine of that kind: there the build is an ordinary one, with nothing foreign about it.

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES URA_TRIPLE)

find_program(URA_COMPILER "${URA_TRIPLE}-g++")
if(NOT URA_COMPILER)
  message(FATAL_ERROR "${URA_TRIPLE}-g++ is missing: \"scripts/install-deps PRESET\" installs it")
endif()
set(CMAKE_C_COMPILER "${URA_TRIPLE}-gcc")
set(CMAKE_CXX_COMPILER "${URA_TRIPLE}-g++")

execute_process(COMMAND g++ -dumpmachine OUTPUT_VARIABLE own_triple OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT own_triple STREQUAL URA_TRIPLE)
  set(CMAKE_SYSTEM_NAME Linux)
  string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${URA_TRIPLE}")
  # Debian's name for it, which goes into the packages.
  set(URA_ARCHITECTURE_i686 i386)
  set(URA_ARCHITECTURE_aarch64 arm64)
  set(URA_ARCHITECTURE_arm armhf)
  set(URA_ARCHITECTURE "${URA_ARCHITECTURE_${CMAKE_SYSTEM_PROCESSOR}}")
endif()

if(URA_TRIPLE MATCHES "^arm-")
  set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)  # or g++ notes at many places that it differs from its versions before 7
endif()
