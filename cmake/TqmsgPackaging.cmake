# Debian packages, made by `cpack -G DEB` in a build tree: one package per
# install component, named and laid out as Debian's own library packages are.
#   libtqmsg1     the shared library (SONAME libtqmsg.so.1) only
#   libtqmsg-dev  headers (C++ and C), tqmsg.3, the .so link, the CMake and
#                 pkg-config files
#   tqmsg         the command-line tool and its man page
# The runtime and development packages are Multi-Arch: same (the x86-64 and
# i386 builds install side by side), the tool Multi-Arch: foreign (one tool
# serves every architecture). CPack cannot write every control field Debian
# expects, so TqmsgDebianFinish.cmake completes each package after CPack.

set(TQMSG_PACKAGE_MAINTAINER "tqmsg developers <tqmsg@example.org>" CACHE STRING
    "The Maintainer field of the Debian packages")
set(TQMSG_RUNTIME_PACKAGE libtqmsg${PROJECT_VERSION_MAJOR})
set(TQMSG_DEV_PACKAGE libtqmsg-dev)
set(TQMSG_TOOL_PACKAGE tqmsg)
set(_tqmsg_packaging_dir ${PROJECT_SOURCE_DIR}/packaging)

# The changelog's newest entry must be the version being packaged.
file(STRINGS ${_tqmsg_packaging_dir}/changelog _tqmsg_newest LIMIT_COUNT 1)
if(NOT _tqmsg_newest MATCHES "^tqmsg \\(${PROJECT_VERSION}\\) ")
    message(FATAL_ERROR "packaging/changelog starts with '${_tqmsg_newest}': "
                        "add an entry for version ${PROJECT_VERSION}")
endif()

# Every package carries its copyright and changelog in /usr/share/doc/<name>.
# These are for the packages only: a plain `cmake --install` leaves them out.
tqmsg_gzip(${_tqmsg_packaging_dir}/changelog TQMSG_CHANGELOG_GZ)
add_custom_target(tqmsg_changelog DEPENDS ${TQMSG_CHANGELOG_GZ})
add_dependencies(tqmsg tqmsg_changelog)
set(_tqmsg_doc_packages runtime ${TQMSG_RUNTIME_PACKAGE} development ${TQMSG_DEV_PACKAGE})
if(TARGET tqmsg_tool)
    list(APPEND _tqmsg_doc_packages tool ${TQMSG_TOOL_PACKAGE})
endif()
# Installs the copyright and changelog of each package into the component
# that becomes it, and packages the component: arguments in pairs,
# <component> <package>.
macro(tqmsg_package_components)
    set(_tqmsg_pairs ${ARGN})
    while(_tqmsg_pairs)
        list(POP_FRONT _tqmsg_pairs _component _package)
        install(FILES ${_tqmsg_packaging_dir}/copyright ${TQMSG_CHANGELOG_GZ}
                DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${_package}
                COMPONENT ${_component} EXCLUDE_FROM_ALL)
        list(APPEND CPACK_COMPONENTS_ALL ${_component})
    endwhile()
endmacro()
tqmsg_package_components(${_tqmsg_doc_packages})

set(CPACK_PACKAGE_NAME tqmsg)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${TQMSG_PACKAGE_MAINTAINER}")
# Empty, so that CPack does not put the same first line on every package.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
if(TQMSG_MULTIARCH)
    execute_process(COMMAND dpkg-architecture -qDEB_HOST_ARCH -t${TQMSG_MULTIARCH}
                    OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
# Dependencies on the C and C++ libraries come from dpkg-shlibdeps; those
# between our packages are exact versions (they are always built together).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
# The shlibs file tells packages built against the library what to depend on.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${TQMSG_RUNTIME_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "run-time message catalogue read from message compiler files
The tqmsg library gives programs ported from Windows a run-time message
catalogue: it loads Message Compiler source files (.mc) when the program
starts and formats their messages with the calling conventions of
FormatMessage (flags, inserts %1 to %199 with printf formats, line width).

This package contains the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${TQMSG_DEV_PACKAGE})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "run-time message catalogue read from message compiler files - development files
The tqmsg library gives programs ported from Windows a run-time message
catalogue: it loads Message Compiler source files (.mc) when the program
starts and formats their messages with the calling conventions of
FormatMessage.

This package contains the headers, the CMake package (find_package(tqmsg))
and the pkg-config file needed to build programs that use the library.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ${TQMSG_TOOL_PACKAGE})
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOL_DESCRIPTION
    "check, list and format message compiler files
The tqmsg tool works on Message Compiler source files (.mc) with the tqmsg
library: it checks that files load, lists their messages as a table, TSV or
JSON, formats a message with arguments, and writes the C and C++ header of
message identifiers that programs using the library include.")

# Completed after CPack: the Multi-Arch fields, stripping, an ldconfig trigger
# in place of CPack's ldconfig scripts, and the runtime package's symbols file.
set(CPACK_TQMSG_MULTI_ARCH ${TQMSG_RUNTIME_PACKAGE}=same ${TQMSG_DEV_PACKAGE}=same
                           ${TQMSG_TOOL_PACKAGE}=foreign)
set(CPACK_TQMSG_LIBRARY_PACKAGE ${TQMSG_RUNTIME_PACKAGE})
set(CPACK_TQMSG_DEV_PACKAGE ${TQMSG_DEV_PACKAGE})
if(TARGET tqmsg_journal)
    include(TqmsgJournalPackaging)
endif()
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/TqmsgDebianFinish.cmake)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/TqmsgCPackProject.cmake)

include(CPack)
