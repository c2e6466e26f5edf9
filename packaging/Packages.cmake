# What cpack needs to know of the four packages. The names in capitals are those of the install components.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${KTQDDE_PROGRAM_PACKAGE})
set(CPACK_PACKAGE_CONTACT "${KTQDDE_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has one of its own: the first line of its description
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL programs runtime rules development)
# Whatever the umask of the person who packs.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${KTQDDE_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Only the toolkit's database driver is loaded by name, so that no link tells of it.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME ${KTQDDE_PROGRAM_PACKAGE})
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_DEPENDS libqt6sql6-sqlite)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS "fonts-noto-cjk, qt6-translations-l10n")
# The driver for offices on a server, which most people work without.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SUGGESTS "libqt6sql6-psql")
set(CPACK_COMPONENT_PROGRAMS_DESCRIPTION "rule editor that prices building installations
Cost engineers take off the components of plumbing, electrical, HVAC, fire
protection and low-voltage installations and price them with items of a bill
of quantities and of a quota library. The rules that do this by themselves
are made and kept with these programs: ktqdde-editor on the desktop, and
ktqdde at the command line, which edits hundreds of rules by a script.

All windows and messages are in Simplified Chinese.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${KTQDDE_MODULE_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The loader's cache is renewed by a trigger. cpack calls ldconfig in a script unless the package has scripts.
set(KTQDDE_MODULE_CONTROL triggers postinst postrm)
list(TRANSFORM KTQDDE_MODULE_CONTROL PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/debian/module/)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${KTQDDE_MODULE_CONTROL})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "module of a rule editor that prices building installations
Rules that price the components of building installations with items of a
bill of quantities and of a quota library: reading, editing and writing the
rule files, and the dialogs in which a person does it.

This package holds the module that a host program loads.")

set(CPACK_DEBIAN_RULES_PACKAGE_NAME ${KTQDDE_RULES_PACKAGE})
set(CPACK_DEBIAN_RULES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RULES_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RULES_PACKAGE_CONTROL_EXTRA ${KTQDDE_MODULE_CONTROL})
set(CPACK_COMPONENT_RULES_DESCRIPTION "library that prices building installations by rules
Rules that price the components of building installations with items of a
bill of quantities and of a quota library: which rule a component gets and
why, its quantities, and the bill of quantities of a whole take-off.

This package holds the library for programs that price. It needs nothing
graphical.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${KTQDDE_DEVELOPMENT_PACKAGE})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${KTQDDE_MODULE_PACKAGE} (= ${PROJECT_VERSION}-${KTQDDE_PACKAGE_RELEASE}), ${KTQDDE_RULES_PACKAGE} (= ${PROJECT_VERSION}-${KTQDDE_PACKAGE_RELEASE}), qt6-base-dev (>= 6.4)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "headers of the module that prices building installations
Rules that price the components of building installations with items of a
bill of quantities and of a quota library: reading, editing and writing the
rule files, and the dialogs in which a person does it.

This package holds what building a host program needs. CMake finds it under
the name KtQdDeConfig.")
