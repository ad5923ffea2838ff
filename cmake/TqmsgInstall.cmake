# Install rules: the library with its SONAME links, the headers under
# include/tqmsg/, a CMake package (find_package(tqmsg) -> tqmsg::tqmsg) and a
# pkg-config file. Both let existing code keep `#include "MessageModule.h"`.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS tqmsg EXPORT tqmsgTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
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

configure_file(cmake/tqmsg.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsg.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(CPACK_PACKAGE_NAME tqmsg)
set(CPACK_PACKAGE_CONTACT "tqmsg developers <tqmsg@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
