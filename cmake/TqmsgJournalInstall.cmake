# Install rules of libtqmsg-journal, in two components of their own, which
# become the Debian packages libtqmsg-journal1 (`journal`: the shared library)
# and libtqmsg-journal-dev (`journaldev`: header, .so link, man page, CMake
# targets and tqmsg-journal.pc). Its CMake targets are an export set of their
# own, tqmsgJournalTargets.cmake, shipped with the development package:
# tqmsgConfig.cmake includes it when present, so find_package(tqmsg) works
# with or without the journal library and COMPONENTS journal requires it.
install(TARGETS tqmsg_journal EXPORT tqmsgJournalTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT journal
                NAMELINK_COMPONENT journaldev)
install(FILES ${PROJECT_SOURCE_DIR}/journal/include/tqmsg-journal.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tqmsg COMPONENT journaldev)
install(EXPORT tqmsgJournalTargets NAMESPACE tqmsg:: DESTINATION ${TQMSG_CMAKE_DIR}
        COMPONENT journaldev)

tqmsg_gzip(${PROJECT_SOURCE_DIR}/journal/tqmsg-journal.3 TQMSG_JOURNAL_MAN_PAGE_GZ)
add_custom_target(tqmsg_journal_man_page DEPENDS ${TQMSG_JOURNAL_MAN_PAGE_GZ})
add_dependencies(tqmsg_journal tqmsg_journal_man_page)
install(FILES ${TQMSG_JOURNAL_MAN_PAGE_GZ} DESTINATION ${CMAKE_INSTALL_MANDIR}/man3
        COMPONENT journaldev)

# Located like tqmsg.pc; libsystemd is private: only static linking needs it.
configure_file(${PROJECT_SOURCE_DIR}/cmake/tqmsg-journal.pc.in
               ${CMAKE_CURRENT_BINARY_DIR}/tqmsg-journal.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqmsg-journal.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT journaldev)
