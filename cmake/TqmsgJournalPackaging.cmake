# The Debian packages of libtqmsg-journal (see TqmsgJournalInstall.cmake),
# completed by TqmsgDebianFinish.cmake like libtqmsg's: Multi-Arch: same, an
# ldconfig trigger, a symbols file naming the development package.
set(TQMSG_JOURNAL_PACKAGE libtqmsg-journal1)
set(TQMSG_JOURNAL_DEV_PACKAGE libtqmsg-journal-dev)

tqmsg_package_components(journal ${TQMSG_JOURNAL_PACKAGE} journaldev ${TQMSG_JOURNAL_DEV_PACKAGE})

set(CPACK_COMPONENT_JOURNAL_DEPENDS runtime)
# The tool's catalog command asks the journal library for message IDs.
list(APPEND CPACK_COMPONENT_TOOL_DEPENDS journal)
list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/journal)
set(CPACK_COMPONENT_JOURNALDEV_DEPENDS journal development)

set(CPACK_DEBIAN_JOURNAL_PACKAGE_NAME ${TQMSG_JOURNAL_PACKAGE})
set(CPACK_DEBIAN_JOURNAL_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_JOURNAL_DESCRIPTION
    "events of ported services in the systemd journal
The tqmsg-journal library logs the events of programs ported from Windows,
which kept their messages in Message Compiler files, to the systemd journal:
one call formats an event's message with tqmsg and sends it with its
priority, a stable MESSAGE_ID and its inserts as fields of their own.

This package contains the shared library.")

set(CPACK_DEBIAN_JOURNALDEV_PACKAGE_NAME ${TQMSG_JOURNAL_DEV_PACKAGE})
set(CPACK_DEBIAN_JOURNALDEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_JOURNALDEV_PACKAGE_DEPENDS "libsystemd-dev")
set(CPACK_DEBIAN_JOURNALDEV_DESCRIPTION
    "events of ported services in the systemd journal - development files
The tqmsg-journal library logs the events of programs ported from Windows,
which kept their messages in Message Compiler files, to the systemd journal,
with priorities, message IDs and catalogues for journalctl -x.

This package contains the header, the manual page, the CMake targets
(find_package(tqmsg COMPONENTS journal)) and the pkg-config file.")

list(APPEND CPACK_TQMSG_MULTI_ARCH ${TQMSG_JOURNAL_PACKAGE}=same ${TQMSG_JOURNAL_DEV_PACKAGE}=same)
set(CPACK_TQMSG_JOURNAL_LIBRARY_PACKAGE ${TQMSG_JOURNAL_PACKAGE})
set(CPACK_TQMSG_JOURNAL_DEV_PACKAGE ${TQMSG_JOURNAL_DEV_PACKAGE})
