# The archive library that comes with zlib; it brings no package file of its own.
find_path(Minizip_INCLUDE_DIR minizip/unzip.h)
find_library(Minizip_LIBRARY minizip)
find_package(ZLIB)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Minizip REQUIRED_VARS Minizip_LIBRARY Minizip_INCLUDE_DIR ZLIB_FOUND)

if(Minizip_FOUND AND NOT TARGET Minizip::Minizip)
    add_library(Minizip::Minizip UNKNOWN IMPORTED)
    set_target_properties(Minizip::Minizip PROPERTIES
        IMPORTED_LOCATION "${Minizip_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Minizip_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
endif()
mark_as_advanced(Minizip_INCLUDE_DIR Minizip_LIBRARY)
