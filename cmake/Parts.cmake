# Which parts are built, what a part lacks, and what is ours to decide: as a subproject nothing is
# put into the cache of the project around it.

set(HX_IS_TOP FALSE)
if(CMAKE_SOURCE_DIR STREQUAL PROJECT_SOURCE_DIR)
  set(HX_IS_TOP TRUE)
endif()

# hx_option(NAME DEFAULT TEXT): a switch; as a subproject a plain variable that the project around
# may have set.
function(hx_option name default text)
  if(HX_IS_TOP)
    set(${name} ${default} CACHE STRING "${text}")
  elseif("${${name}}" STREQUAL "") # also where the project around has left it empty in its cache
    set(${name} ${default} PARENT_SCOPE)
  endif()
endfunction()

if(HX_IS_TOP)
  include(CTest) # BUILD_TESTING
  set(defaultParts all)
else()
  set(BUILD_TESTING OFF)
  set(defaultParts plugin)
endif()
hx_option(HX_PARTS ${defaultParts} "What is built: plugin, host, apps or all; each with those before it")
hx_option(HX_WERROR OFF "Take warnings as errors")

set(partNames plugin host apps all)
list(FIND partNames "${HX_PARTS}" chosenPart)
if(chosenPart LESS 0)
  message(FATAL_ERROR "HX_PARTS is \"${HX_PARTS}\". Expected: plugin (the byte buffer, the contract "
    "and the plugin), host (and the host library), apps (and the programs) or all (and all tests).")
endif()
foreach(part HOST APPS ALL)
  string(TOLOWER ${part} name)
  list(FIND partNames ${name} at)
  set(HX_HAS_${part} FALSE)
  if(NOT chosenPart LESS at)
    set(HX_HAS_${part} TRUE)
  endif()
endforeach()

# hx_find_package(NAME DEBIAN [ARGUMENT...]): finds what a chosen part needs, or says what to install.
macro(hx_find_package name debian)
  find_package(${name} ${ARGN} QUIET)
  if(NOT ${name}_FOUND)
    message(FATAL_ERROR "${name} ${ARGN} is missing, and HX_PARTS=${HX_PARTS} needs it. "
      "Debian: apt install ${debian}. Less is needed by: cmake -DHX_PARTS=plugin (Qt Core alone).")
  endif()
  hx_note_versions(${name} "${debian}")
endmacro()
