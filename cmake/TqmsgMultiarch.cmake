# Debian and its derivatives keep each architecture's libraries in a directory
# of its own, lib/<triplet>, so that the x86-64 and i386 builds of a library
# install side by side. GNUInstallDirs chooses that directory only for the /usr
# prefix and only when CMake knows the triplet, which it does not for a -m32
# build; the compiler names it for the flags in use, so we ask it. The result,
# TQMSG_MULTIARCH, also names the architecture of the Debian packages.
# Include this before GNUInstallDirs; -DCMAKE_INSTALL_LIBDIR=... still wins.
set(TQMSG_MULTIARCH "")
if(EXISTS /etc/debian_version AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    separate_arguments(_tqmsg_flags UNIX_COMMAND "${CMAKE_CXX_FLAGS}")
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${_tqmsg_flags} -print-multiarch
                    OUTPUT_VARIABLE TQMSG_MULTIARCH
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(TQMSG_MULTIARCH AND NOT DEFINED CMAKE_INSTALL_LIBDIR)
    set(CMAKE_INSTALL_LIBDIR lib/${TQMSG_MULTIARCH} CACHE PATH "Object code libraries (LIBDIR)")
endif()
