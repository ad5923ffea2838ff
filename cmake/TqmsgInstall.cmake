# Install rules: the library with its SONAME links, the headers under
# include/tqmsg/, the tqmsg tool with its man page, a CMake package
# (find_package(tqmsg) -> tqmsg::tqmsg, and tqmsg::tool for the tool) and a
# pkg-config file. Both let existing code keep `#include "MessageModule.h"`.
# Every installed path is relative to the prefix, so the same tree works from
# a temporary prefix and from the Debian package.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS tqmsg EXPORT tqmsgTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET tqmsg_tool)
    # The tool finds the library beside it wherever the tree is installed.
    file(RELATIVE_PATH _tqmsg_bin_to_lib /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(tqmsg_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${_tqmsg_bin_to_lib}")
    install(TARGETS tqmsg_tool EXPORT tqmsgTargets RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES tools/tqmsg.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
install(FILES include/MessageModuleMaps.h include/MessageTable.h include/MessageModule.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tqmsg)

set(TQMSG_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tqmsg)
install(EXPORT tqmsgTargets NAMESPACE tqmsg:: DESTINATION ${TQMSG_CMAKE_DIR})
configure_package_config_file(cmake/tqmsgConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfig.cmake INSTALL_DESTINATION ${TQMSG_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/tqmsgConfigVersion.cmake
        DESTINATION ${TQMSG_CMAKE_DIR})

# The .pc file finds its prefix from its own location (pkg-config's pcfiledir).
file(RELATIVE_PATH TQMSG_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" TQMSG_PC_TO_PREFIX "${TQMSG_PC_TO_PREFIX}")
configure_file(cmake/tqmsg.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(CPACK_PACKAGE_NAME tqmsg)
set(CPACK_PACKAGE_CONTACT "tqmsg developers <tqmsg@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_STRIP_FILES ON)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
include(CPack)
