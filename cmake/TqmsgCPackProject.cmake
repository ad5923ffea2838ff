# Read by cpack before each package generator runs (CPACK_PROJECT_CONFIG_FILE).
# dpkg-shlibdeps finds the libraries that a binary needs in the directories of
# the architecture named by DEB_HOST_ARCH, by default the build machine's.
# Without it, i386 packages built on an amd64 machine would depend on that
# machine's 32-bit compatibility libraries (lib32stdc++6) instead of i386's.
if(CPACK_GENERATOR STREQUAL "DEB" AND CPACK_DEBIAN_PACKAGE_ARCHITECTURE)
    set(ENV{DEB_HOST_ARCH} ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})
endif()
