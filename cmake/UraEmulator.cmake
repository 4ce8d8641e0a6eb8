# Finds out whether this machine executes the programs it builds, by trying one, and has QEMU run them if it does not.
#
# CMake starts the test programs with CMAKE_CROSSCOMPILING_EMULATOR. The script `run` in the build folder starts any
# other program of this build, directly or in the emulator: `build/armhf/run PROGRAM ARGUMENT...`

option(URA_EMULATE "Run foreign programs in the emulator even if this machine executes them" OFF)

# ura_find_emulator(VARIABLE): the command that runs the programs of this build; empty if they run by themselves.
function(ura_find_emulator variable)
  set(${variable} "" PARENT_SCOPE)
  if(NOT CMAKE_CROSSCOMPILING)
    return()
  endif()

  set(reason "URA_EMULATE is set")
  if(NOT URA_EMULATE)
    set(program "${CMAKE_BINARY_DIR}/CMakeFiles/executes")
    file(WRITE "${program}.cpp" "#include <iostream>\nint main() {\n  std::cout << \"executed\";\n}\n")
    try_compile(compiled "${CMAKE_BINARY_DIR}/CMakeFiles" SOURCES "${program}.cpp" COPY_FILE "${program}")
    execute_process(COMMAND "${program}" OUTPUT_VARIABLE said ERROR_QUIET)
    if(said STREQUAL "executed")
      return()
    endif()
    set(reason "this machine does not execute them")
  endif()

  string(REGEX REPLACE "^i.86$" "i386" processor "${CMAKE_SYSTEM_PROCESSOR}")
  find_program(URA_QEMU "qemu-${processor}" DOC "The emulator of the machine that is built for")
  if(URA_QEMU)
    message(NOTICE "Programs for ${processor} are run by qemu-${processor}: ${reason}")
    # The loader must not find the C library of libc6-i386, which may be of another version than the loader itself.
    set(system "/usr/${URA_TRIPLE}")
    set(${variable} "${URA_QEMU};-L;${system};-E;LD_LIBRARY_PATH=${system}/lib" PARENT_SCOPE)
  elseif(URA_BUILD_TESTS)
    message(FATAL_ERROR "The tests need qemu-${processor} (package qemu-user), because programs for ${processor} must be "
                        "emulated: ${reason}. Without tests: -DURA_BUILD_TESTS=OFF")
  endif()
endfunction()

ura_find_emulator(CMAKE_CROSSCOMPILING_EMULATOR)
string(COMPARE NOTEQUAL "${CMAKE_CROSSCOMPILING_EMULATOR}" "" URA_EMULATED)

list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
file(WRITE "${CMAKE_BINARY_DIR}/run" "#!/bin/sh\nexec ${emulator} \"$@\"\n")
file(CHMOD "${CMAKE_BINARY_DIR}/run" FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# ura_command(VARIABLE TARGET): the path of a file that can be executed as the program TARGET. If only the emulator can
# run the program, that is a small program of this machine, which starts the emulator.
function(ura_command variable target)
  if(NOT URA_EMULATED)
    set(${variable} "$<TARGET_FILE:${target}>" PARENT_SCOPE)
    return()
  endif()
  set(starter "${CMAKE_BINARY_DIR}/emulated/${target}")
  set(${variable} "${starter}" PARENT_SCOPE)
  if(TARGET ${target}_starter)
    return()
  endif()
  list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "\", \"" command)
  set(command "\"${command}\"")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/emulated.cpp.in" "${starter}.cpp.in" @ONLY)
  file(GENERATE OUTPUT "${starter}.cpp" INPUT "${starter}.cpp.in")
  add_custom_command(OUTPUT "${starter}" COMMAND g++ -O1 -o "${starter}" "${starter}.cpp" DEPENDS "${starter}.cpp" VERBATIM)
  add_custom_target(${target}_starter ALL DEPENDS "${starter}")
endfunction()
