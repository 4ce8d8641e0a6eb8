# How every target of this project is compiled and linked.

include(CheckCXXSourceCompiles)
find_package(Threads REQUIRED)

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Times and file sizes have 64 bits on every machine. They appear in the headers: whoever includes those must see the
  # same types, so this is part of the interface of each library, and holds for all else that is built here.
  set(wide_types _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  add_compile_definitions(${wide_types})
endif()

if(URA_SANITIZE)
  add_compile_options(-fsanitize=${URA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${URA_SANITIZE})
endif()

# Warnings are for our own code only: GoogleTest, built in the same tree, has its own.
add_library(ura_warnings INTERFACE)
target_compile_options(ura_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       $<$<BOOL:${URA_WARNINGS_AS_ERRORS}>:-Werror>)

# ura_library(NAME SOURCE... PUBLIC_HEADERS HEADER...): a static library, also known as ura::NAME as it is where it is
# installed. Its own folder is an include directory; the public headers are those that are installed.
# Each function gets a section of its own, so that a program carries only what it calls.
function(ura_library name)
  cmake_parse_arguments(PARSE_ARGV 1 library "" "" PUBLIC_HEADERS)
  add_library(${name} STATIC ${library_UNPARSED_ARGUMENTS})
  add_library(ura::${name} ALIAS ${name})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}"
                 FILES ${library_PUBLIC_HEADERS})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_compile_definitions(${name} PUBLIC ${wide_types})
  target_compile_options(${name} PRIVATE -ffunction-sections -fdata-sections)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:ura_warnings>)
endfunction()

# ura_program(NAME SOURCE...): an executable with nothing in it that is not called. In the shipped build it loads no
# C++ runtime.
function(ura_program name)
  add_executable(${name} ${ARGN})
  target_compile_options(${name} PRIVATE -ffunction-sections -fdata-sections)
  target_link_libraries(${name} PRIVATE ura_warnings)
  target_link_options(${name} PRIVATE -Wl,--gc-sections -Wl,--as-needed $<$<CONFIG:Release>:-s>)
  if(URA_SHIPPED_BUILD)
    target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
  endif()
endfunction()

# ura_link_statically(NAME): links a program whole, the C library included, at a fixed address: starting it loads and
# relocates nothing. docs/performance.md has the figures. The program must fix its name services, as app/main.cpp does.
function(ura_link_statically name)
  set(CMAKE_REQUIRED_LINK_OPTIONS -static)
  check_cxx_source_compiles("int main() {}" URA_HAS_STATIC_C_LIBRARY)
  if(NOT URA_HAS_STATIC_C_LIBRARY)
    message(FATAL_ERROR "${name} cannot be linked statically: install the static C library (libc6-dev has it on Debian, "
                        "glibc-static elsewhere), or configure with -DURA_STATIC_PROGRAM=OFF")
  endif()
  target_link_options(${name} PRIVATE -static)
  set_target_properties(${name} PROPERTIES CXX_LINKER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/without-lookup-warning")
endfunction()
