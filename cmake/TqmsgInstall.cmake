# Install rules: the library with its SONAME links, the headers under
# include/tqmsg/ with the C interface's man page (tqmsg.3), the tqmsg tool
# with its man page, a CMake package (find_package(tqmsg) -> tqmsg::tqmsg, and
# tqmsg::tool for the tool) and a pkg-config file. Both let existing code keep
# `#include "MessageModule.h"`. Every installed path is relative to the prefix, so the same tree works from
# a temporary prefix and from the Debian packages.
#
# Each rule belongs to one of three components, which become the three Debian
# packages: `runtime` (the shared library only), `development` (headers, the
# unversioned .so link, the CMake and pkg-config files) and `tool`.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Compresses SOURCE into the build tree at build time (gzip -9n: the best
# compression, and no name or time stamp, so that builds are reproducible).
# The caller's variable OUTPUT_VAR receives the path of the .gz file.
function(tqmsg_gzip source output_var)
    get_filename_component(_name ${source} NAME)
    set(_copy ${CMAKE_CURRENT_BINARY_DIR}/compressed/${_name})
    add_custom_command(OUTPUT ${_copy}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/compressed
        COMMAND ${CMAKE_COMMAND} -E copy ${source} ${_copy}
        COMMAND gzip -9nf ${_copy}
        DEPENDS ${source}
        VERBATIM)
    set(${output_var} ${_copy}.gz PARENT_SCOPE)
endfunction()

install(TARGETS tqmsg EXPORT tqmsgTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
                NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
if(TARGET tqmsg_tool)
    # The tool finds the library beside it wherever the tree is installed.
    file(RELATIVE_PATH _tqmsg_bin_to_lib /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(tqmsg_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${_tqmsg_bin_to_lib}")
    # Not part of the export set: the tool ships in a package of its own, and
    # the CMake package finds it at use time (see tqmsgConfig.cmake.in).
    install(TARGETS tqmsg_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
    tqmsg_gzip(${PROJECT_SOURCE_DIR}/tools/tqmsg.1 TQMSG_MAN_PAGE_GZ)
    add_custom_target(tqmsg_man_page DEPENDS ${TQMSG_MAN_PAGE_GZ})
    # Built with the tool, so that building the tool alone is enough to install.
    add_dependencies(tqmsg_tool tqmsg_man_page)
    install(FILES ${TQMSG_MAN_PAGE_GZ} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
endif()
install(FILES include/MessageModuleMaps.h include/MessageTable.h include/MessageModule.h
              include/tqmsg.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tqmsg COMPONENT development)
# The C interface's manual page goes with its header. Built with the library,
# so that building the library alone is enough to install it.
tqmsg_gzip(${PROJECT_SOURCE_DIR}/doc/tqmsg.3 TQMSG_C_MAN_PAGE_GZ)
add_custom_target(tqmsg_c_man_page DEPENDS ${TQMSG_C_MAN_PAGE_GZ})
add_dependencies(tqmsg tqmsg_c_man_page)
install(FILES ${TQMSG_C_MAN_PAGE_GZ} DESTINATION ${CMAKE_INSTALL_MANDIR}/man3
        COMPONENT development)

set(TQMSG_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tqmsg)
install(EXPORT tqmsgTargets NAMESPACE tqmsg:: DESTINATION ${TQMSG_CMAKE_DIR}
        COMPONENT development)
configure_package_config_file(cmake/tqmsgConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfig.cmake INSTALL_DESTINATION ${TQMSG_CMAKE_DIR}
    PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/TqmsgMessages.cmake
        DESTINATION ${TQMSG_CMAKE_DIR} COMPONENT development)

# The .pc file finds its prefix from its own location (pkg-config's pcfiledir).
file(RELATIVE_PATH TQMSG_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" TQMSG_PC_TO_PREFIX "${TQMSG_PC_TO_PREFIX}")
configure_file(cmake/tqmsg.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

if(TARGET tqmsg_journal)
    include(TqmsgJournalInstall)
endif()

include(TqmsgPackaging)
