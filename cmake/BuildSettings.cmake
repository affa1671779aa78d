# What every target of this project is compiled with: C++17, many warnings, hidden symbols.

if(HX_IS_TOP AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs, the plugin and its libraries lie where a person looks for them in a build folder.
if(HX_IS_TOP)
  include(GNUInstallDirs)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
  set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(HX_WERROR)
  add_compile_options(-Werror)
endif()
# So that a program's linker can leave out what it does not use.
add_compile_options($<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
add_compile_definitions(QT_DEPRECATED_WARNINGS QT_NO_KEYWORDS)
# Nothing that was deprecated in Qt 5.12 is there; Qt 5 warns of all that was deprecated up to 5.15.
if(HX_QT EQUAL 6)
  add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x050C00)
endif()

# A project around this one decides for all of its binaries.
include(CheckCXXSourceCompiles)
include(${CMAKE_CURRENT_LIST_DIR}/Hardening.cmake)
if(HX_IS_TOP)
  hx_harden()
endif()

list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
include(${CMAKE_CURRENT_LIST_DIR}/Install.cmake)

# hx_precompile(TARGET HEADER...): headers that cost most of the time its files take to compile.
function(hx_precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  # A header with a time in it would never be found in the compiler's cache.
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
endfunction()

# Whether objects of what the window is made of also hold what its linker can go on with. Not where
# whoever builds has decided for everything.
set(HX_SHRINKS FALSE)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT CMAKE_INTERPROCEDURAL_OPTIMIZATION
    AND NOT CMAKE_CXX_FLAGS MATCHES "-flto")
  set(HX_SHRINKS $<CONFIG:Release>)
endif()

# hx_small(TARGET): what the window is made of. Its size counts, and it waits for a MIDI wire, not for
# the processor. Other programs link it as ever: gcc would shrink each of them, which takes seconds.
function(hx_small target)
  target_compile_options(${target} PRIVATE
    $<$<CONFIG:Release>:-Os> $<$<BOOL:${HX_SHRINKS}>:-flto=auto;-ffat-lto-objects>)
  target_link_options(${target} INTERFACE
    $<BUILD_INTERFACE:$<$<AND:$<BOOL:${HX_SHRINKS}>,$<NOT:$<BOOL:$<TARGET_PROPERTY:HX_SMALL>>>>:-fno-lto>>)
endfunction()

# Whether the loader of the C library knows the short form of what it has to relocate.
function(hx_packs_relocations result)
  set(CMAKE_REQUIRED_LINK_OPTIONS LINKER:-z,pack-relative-relocs)
  check_cxx_source_compiles("#include <cstdlib>
    #if !__GLIBC_PREREQ(2, 36)
    #error The loader does not know them.
    #endif
    int main() { return 0; }" HX_PACKS_RELOCATIONS)
  set(${result} ${HX_PACKS_RELOCATIONS} PARENT_SCOPE)
endfunction()

# hx_link_small(PROGRAM): leaves out what the program does not use, and shrinks the rest as a whole.
function(hx_link_small program)
  hx_small(${program})
  hx_packs_relocations(packs)
  set_target_properties(${program} PROPERTIES HX_SMALL TRUE)
  target_link_options(${program} PRIVATE
    $<IF:$<PLATFORM_ID:Darwin>,-Wl$<COMMA>-dead_strip,-Wl$<COMMA>--gc-sections>
    $<$<BOOL:${HX_SHRINKS}>:-Os;-flto=auto;-flto-partition=one>
    $<$<BOOL:${packs}>:LINKER:-z,pack-relative-relocs>)
endfunction()
