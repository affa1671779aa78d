# What `cmake --install` puts where, and what other projects find there: CMake package, pkg-config.
include(CMakePackageConfigHelpers)

# A project around this one may have chosen the folders.
if(NOT HX_IS_TOP)
  hx_option(CMAKE_INSTALL_BINDIR bin "Programs")
  hx_option(CMAKE_INSTALL_LIBDIR lib "Libraries")
  hx_option(CMAKE_INSTALL_INCLUDEDIR include "Headers")
  hx_option(CMAKE_INSTALL_DATADIR share "Data")
  hx_option(CMAKE_INSTALL_MANDIR share/man "Manual pages")
  hx_option(CMAKE_INSTALL_DOCDIR share/doc/${PROJECT_NAME} "Documents")
endif()

# Components: plugin (to run it), devel (to build with it), tools (the programs).

# What the package is called.
set(HX_KIT HxMidiKit${HX_QT_SUFFIX})
# Folder names as short as `host` stay out of the include folder that all packages share.
set(HX_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/hxmidikit${HX_QT_SUFFIX})
# Device plugins, of this project and of others; the host program looks for them here.
set(HX_INSTALL_PLUGINDIR ${CMAKE_INSTALL_LIBDIR}/hxmidikit${HX_QT_SUFFIX}/plugins)
set(HX_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/${HX_KIT})
set(HX_INSTALL_PKGCONFIGDIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# hx_relative_install_path(RESULT FROM TO): how to get from one installed folder to another, so that
# an installation may be moved as a whole.
function(hx_relative_install_path result from to)
  foreach(folder from to)
    get_filename_component(${folder} ${${folder}} ABSOLUTE BASE_DIR ${CMAKE_INSTALL_PREFIX})
  endforeach()
  file(RELATIVE_PATH path ${from} ${to})
  string(REGEX REPLACE "/$" "" path ${path})
  set(${result} ${path} PARENT_SCOPE)
endfunction()

# hx_install_library(TARGET DESCRIPTION TEXT [REQUIRES PACKAGE...] [EXPORT NAME] HEADERS FILE...):
# a library that other projects link. The headers go into a folder named as the room's, so that they
# are included by the same name as here. REQUIRES names the pkg-config packages it leans on; its own
# are those of the same major version of Qt.
function(hx_install_library target)
  cmake_parse_arguments(ARG "" "DESCRIPTION;EXPORT" "REQUIRES;HEADERS" ${ARGN})
  if(NOT ARG_EXPORT)
    set(ARG_EXPORT HxMidiKitTargets)
  endif()
  add_library(HxMidiKit::${target} ALIAS ${target})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${target}${HX_QT_SUFFIX})
  get_filename_component(room ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  install(TARGETS ${target} EXPORT ${ARG_EXPORT}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT devel
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT devel
    INCLUDES DESTINATION ${HX_INSTALL_INCLUDEDIR})
  foreach(header IN LISTS ARG_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${HX_INSTALL_INCLUDEDIR}/${room}/${folder} COMPONENT devel)
  endforeach()
  hx_install_ordinary_objects(${target})
  hx_install_pkgconfig(${target} "${ARG_DESCRIPTION}" "${ARG_REQUIRES}")
endfunction()

# Takes out of the installed library what gcc can link on with: another version of gcc would refuse it.
function(hx_install_ordinary_objects target)
  get_target_property(type ${target} TYPE)
  if(NOT HX_SHRINKS OR NOT CMAKE_OBJCOPY OR NOT type STREQUAL STATIC_LIBRARY)
    return()
  endif()
  set(library "${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:${target}>")
  if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(library "\${CMAKE_INSTALL_PREFIX}/${library}")
  endif()
  install(CODE "execute_process(COMMAND \"${CMAKE_OBJCOPY}\" --remove-section=.gnu.lto_*
    --remove-section=.gnu.debuglto_* \"\$ENV{DESTDIR}${library}\")" COMPONENT devel)
endfunction()

function(hx_install_pkgconfig target description requires)
  list(TRANSFORM requires APPEND "${HX_QT_SUFFIX}" REGEX "^Hx")
  string(REPLACE ";" ", " PC_REQUIRES "${requires}")
  set(PC_NAME ${target}${HX_QT_SUFFIX})
  set(PC_DESCRIPTION "${description}")
  set(PC_LIBS "")
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL INTERFACE_LIBRARY)
    set(PC_LIBS "-L\${libdir} -l${PC_NAME}")
  endif()
  hx_relative_install_path(PC_PREFIX ${HX_INSTALL_PKGCONFIGDIR} .)
  foreach(folder IN ITEMS CMAKE_INSTALL_LIBDIR HX_INSTALL_INCLUDEDIR HX_INSTALL_PLUGINDIR)
    set(PC_${folder} ${${folder}})
    if(NOT IS_ABSOLUTE ${${folder}})
      set(PC_${folder} "\${prefix}/${${folder}}")
    endif()
  endforeach()
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in
    ${PROJECT_BINARY_DIR}/pkgconfig/${PC_NAME}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${PC_NAME}.pc
    DESTINATION ${HX_INSTALL_PKGCONFIGDIR} COMPONENT devel)
endfunction()

# hx_install_program(TARGET): with its manual pages and shell completions, where there are some.
function(hx_install_program target)
  install(TARGETS ${target} EXPORT HxMidiKitTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  add_executable(HxMidiKit::${target} ALIAS ${target})
  file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/man/${target}.1
    ${PROJECT_SOURCE_DIR}/docs/man/${target}-*.1)
  install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  hx_install_completion(${target}.bash bash-completion/completions/${target})
  hx_install_completion(_${target} zsh/site-functions/_${target})
  hx_install_completion(${target}.fish fish/vendor_completions.d/${target}.fish)
endfunction()

function(hx_install_completion source destination)
  get_filename_component(folder ${destination} DIRECTORY)
  get_filename_component(name ${destination} NAME)
  file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/completions/${source})
  if(found)
    install(FILES ${found} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} COMPONENT tools
      RENAME ${name})
  endif()
endfunction()

# hx_install_package(): call it last, when every target is known.
function(hx_install_package)
  math(EXPR otherQt "11 - ${QT_VERSION_MAJOR}")
  set(otherKit HxMidiKit-qt6)
  if(QT_VERSION_MAJOR EQUAL 6)
    set(otherKit HxMidiKit)
  endif()
  list(TRANSFORM HX_QT_CORE REPLACE ".*::" "" OUTPUT_VARIABLE qtModules)
  list(JOIN qtModules " " qtModules)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/HxMidiKitConfig.cmake.in
    ${PROJECT_BINARY_DIR}/${HX_KIT}Config.cmake
    INSTALL_DESTINATION ${HX_INSTALL_CMAKEDIR}
    PATH_VARS HX_INSTALL_PLUGINDIR)
  # Before 1.0 a minor version may change the interfaces.
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/${HX_KIT}ConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES
    ${PROJECT_BINARY_DIR}/${HX_KIT}Config.cmake
    ${PROJECT_BINARY_DIR}/${HX_KIT}ConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/FindRtMidi.cmake
    ${PROJECT_SOURCE_DIR}/cmake/FindSodium.cmake
    DESTINATION ${HX_INSTALL_CMAKEDIR} COMPONENT devel)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT devel
    FILES_MATCHING
    PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg" PATTERN "*.trace" PATTERN "*.json" PATTERN man EXCLUDE)
  set(sets HxMidiKitTargets)
  if(HX_HAS_HOST)
    list(APPEND sets HxMidiKitPortsTargets)
  endif()
  foreach(set IN LISTS sets)
    install(EXPORT ${set} NAMESPACE HxMidiKit:: DESTINATION ${HX_INSTALL_CMAKEDIR} COMPONENT devel)
  endforeach()
endfunction()
