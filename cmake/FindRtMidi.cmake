# Finds RtMidi, with or without a package file of its own: the target RtMidi::RtMidi.
include(FindPackageHandleStandardArgs)

find_library(RtMidi_LIBRARY rtmidi)
find_path(RtMidi_INCLUDE_DIR RtMidi.h PATH_SUFFIXES rtmidi)
mark_as_advanced(RtMidi_LIBRARY RtMidi_INCLUDE_DIR)
find_package_handle_standard_args(RtMidi REQUIRED_VARS RtMidi_LIBRARY RtMidi_INCLUDE_DIR)

if(RtMidi_FOUND AND NOT TARGET RtMidi::RtMidi)
  add_library(RtMidi::RtMidi UNKNOWN IMPORTED)
  set_target_properties(RtMidi::RtMidi PROPERTIES
    IMPORTED_LOCATION ${RtMidi_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${RtMidi_INCLUDE_DIR})
endif()
