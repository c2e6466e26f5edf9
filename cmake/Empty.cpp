// Owns precompiled headers; see PrecompiledHeaders.cmake.
