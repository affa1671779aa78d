# What makes an error in memory hard to use for an attacker, in every binary. The compiler's part is in optimised
# builds only: in the others sanitizers and assertions find such errors.

# hx_compiles(RESULT FLAG...): whether this compiler and C library know the flags and warn of none.
function(hx_compiles result)
  list(JOIN ARGN " " flags)
  set(CMAKE_REQUIRED_FLAGS "-Werror -O2 ${flags}")
  set(CMAKE_REQUIRED_QUIET TRUE)
  check_cxx_source_compiles("#include <cstring>\nint main() { return int(std::strlen(\"\")); }" ${result})
endfunction()

# What of it they know; of the check of the bounds of known objects level 2 where 3 is too new.
function(hx_find_hardening_flags result)
  set(protectors -fstack-protector-strong -fstack-clash-protection)
  hx_compiles(HX_HARDENS_ALL ${protectors} -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  set(flags ${protectors})
  set(level 3)
  if(NOT HX_HARDENS_ALL)
    set(flags "")
    foreach(flag IN LISTS protectors)
      string(MAKE_C_IDENTIFIER HX_KNOWS${flag} known)
      hx_compiles(${known} ${flag})
      list(APPEND flags $<$<BOOL:${${known}}>:${flag}>)
    endforeach()
    set(level 2)
  endif()
  # Sanitizers watch the functions that fortified ones would stand in for.
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    list(APPEND flags -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level})
  endif()
  set(${result} "${flags}" PARENT_SCOPE)
endfunction()

# hx_harden(): every target from here on.
macro(hx_harden)
  hx_find_hardening_flags(hardeningFlags)
  foreach(config IN ITEMS Release RelWithDebInfo MinSizeRel)
    add_compile_options("$<$<CONFIG:${config}>:${hardeningFlags}>")
  endforeach()
  if(NOT APPLE) # whose linker does the like of it unasked
    add_link_options(LINKER:-z,relro LINKER:-z,now $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
  endif()
endmacro()
