# Fails when PROGRAM loads a graphics library, itself or through another one.
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${PROGRAM}
    RESOLVED_DEPENDENCIES_VAR found UNRESOLVED_DEPENDENCIES_VAR missing
    POST_EXCLUDE_REGEXES "^[Cc]:[/\\\\][Ww]indows")
if(NOT found MATCHES "Qt6Core")
    message(FATAL_ERROR "The libraries of ${PROGRAM} were not found: ${found}")
endif()
list(FILTER found INCLUDE REGEX "Qt6(Gui|Widgets|OpenGL)|libX11|libxcb|libwayland|lib(Open)?GL")
if(found)
    message(FATAL_ERROR "${PROGRAM} needs graphics libraries: ${found}")
endif()
