# Finds libsodium: the target Sodium::Sodium.
include(FindPackageHandleStandardArgs)

find_library(Sodium_LIBRARY sodium)
find_path(Sodium_INCLUDE_DIR sodium.h)
mark_as_advanced(Sodium_LIBRARY Sodium_INCLUDE_DIR)
find_package_handle_standard_args(Sodium REQUIRED_VARS Sodium_LIBRARY Sodium_INCLUDE_DIR)

if(Sodium_FOUND AND NOT TARGET Sodium::Sodium)
  add_library(Sodium::Sodium UNKNOWN IMPORTED)
  set_target_properties(Sodium::Sodium PROPERTIES
    IMPORTED_LOCATION ${Sodium_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Sodium_INCLUDE_DIR})
endif()
