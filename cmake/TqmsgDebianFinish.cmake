# Run by CPack after it has built the packages (CPACK_POST_BUILD_SCRIPTS):
# completes what CPack's Debian generator cannot express, then rebuilds each
# package with dpkg-deb:
#   - the Multi-Arch field, from CPACK_TQMSG_MULTI_ARCH (package=value ...);
#   - binaries stripped as Debian's own packages are (also of the .comment and
#     .note sections, which CPack's plain strip keeps), with new md5sums;
#   - for the library packages CPACK_TQMSG_LIBRARY_PACKAGE and
#     CPACK_TQMSG_JOURNAL_LIBRARY_PACKAGE, an ldconfig trigger
#     in place of the postinst and postrm scripts that run ldconfig (Debian's
#     way since dpkg has triggers), and the symbols file made by
#     dpkg-gensymbols, which gives each exported symbol its first version
#     and names the development package (CPACK_TQMSG_DEV_PACKAGE,
#     CPACK_TQMSG_JOURNAL_DEV_PACKAGE).
# A package whose dependencies point at the build machine's multilib
# libraries is refused (see tqmsg_check_depends).

function(tqmsg_run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE _rc ERROR_VARIABLE _err OUTPUT_QUIET)
    if(NOT _rc EQUAL 0)
        string(REPLACE ";" " " _command "${ARGN}")
        message(FATAL_ERROR "${_command} failed (${_rc}): ${_err}")
    endif()
endfunction()

# Reads the value of FIELD from the control file text CONTROL.
function(tqmsg_control_field control field output_var)
    string(REGEX MATCH "(^|\n)${field}: ([^\n]*)" _match "${control}")
    set(${output_var} "${CMAKE_MATCH_2}" PARENT_SCOPE)
endfunction()

# A dependency on a multilib package (lib32stdc++6, ...) means dpkg-shlibdeps
# found the build machine's compatibility libraries instead of the package
# architecture's own, which a Multi-Arch package must not depend on.
function(tqmsg_check_depends control arch)
    tqmsg_control_field("${control}" Depends _depends)
    if(_depends MATCHES "(^|, )(lib(32|64|x32)[^ ,]*)")
        message(FATAL_ERROR "The ${arch} package depends on ${CMAKE_MATCH_2}, a multilib "
                "package of the build machine: install the ${arch} C++ libraries "
                "(apt-get install libstdc++6:${arch}) and build the packages again")
    endif()
endfunction()

function(tqmsg_add_multi_arch root package)
    foreach(_entry IN LISTS CPACK_TQMSG_MULTI_ARCH)
        if(_entry MATCHES "^([^=]+)=(.+)$" AND CMAKE_MATCH_1 STREQUAL package)
            file(READ ${root}/DEBIAN/control _control)
            string(REGEX REPLACE "(Architecture: [^\n]*\n)" "\\1Multi-Arch: ${CMAKE_MATCH_2}\n"
                   _control "${_control}")
            file(WRITE ${root}/DEBIAN/control "${_control}")
        endif()
    endforeach()
endfunction()

# Strips the executables and shared libraries under ROOT and rewrites the
# md5sums control file, which lists every regular file's checksum.
function(tqmsg_strip root)
    file(GLOB_RECURSE _files LIST_DIRECTORIES false ${root}/usr/*)
    set(_sums "")
    foreach(_file IN LISTS _files)
        if(IS_SYMLINK ${_file})
            continue()
        endif()
        if(_file MATCHES "/usr/bin/[^/]+$")
            tqmsg_run(strip --remove-section=.comment --remove-section=.note ${_file})
        elseif(_file MATCHES "\\.so\\.[0-9.]+$")
            tqmsg_run(strip --remove-section=.comment --remove-section=.note
                      --strip-unneeded ${_file})
        endif()
        file(MD5 ${_file} _md5)
        file(RELATIVE_PATH _path ${root} ${_file})
        string(APPEND _sums "${_md5}  ${_path}\n")
    endforeach()
    file(WRITE ${root}/DEBIAN/md5sums "${_sums}")
endfunction()

function(tqmsg_finish_library root package version arch dev_package)
    file(REMOVE ${root}/DEBIAN/postinst ${root}/DEBIAN/postrm)
    file(WRITE ${root}/DEBIAN/triggers "activate-noawait ldconfig\n")
    file(GLOB_RECURSE _libraries ${root}/*.so.*)
    # Run beside the package tree: dpkg-gensymbols would take a debian/
    # directory in its working directory for the package's source.
    get_filename_component(_work ${root} DIRECTORY)
    list(TRANSFORM _libraries PREPEND "-e")
    tqmsg_run(${CMAKE_COMMAND} -E chdir ${_work}
              dpkg-gensymbols -p${package} -P${root} -v${version} -a${arch} -q
              -O${root}/DEBIAN/symbols ${_libraries})
    # Packages built against the library find their minimum version through
    # this field.
    file(READ ${root}/DEBIAN/symbols _symbols)
    string(FIND "${_symbols}" "\n" _end)
    math(EXPR _end "${_end} + 1")
    string(SUBSTRING "${_symbols}" 0 ${_end} _header)
    string(SUBSTRING "${_symbols}" ${_end} -1 _entries)
    file(WRITE ${root}/DEBIAN/symbols
         "${_header}* Build-Depends-Package: ${dev_package}\n${_entries}")
endfunction()

foreach(_deb IN LISTS CPACK_PACKAGE_FILES)
    if(NOT _deb MATCHES "\\.deb$")
        continue()
    endif()
    get_filename_component(_name ${_deb} NAME)
    set(_root ${CPACK_TOPLEVEL_DIRECTORY}/finish/${_name})
    file(REMOVE_RECURSE ${_root})
    file(MAKE_DIRECTORY ${CPACK_TOPLEVEL_DIRECTORY}/finish)
    tqmsg_run(dpkg-deb --raw-extract ${_deb} ${_root})
    file(READ ${_root}/DEBIAN/control _control)
    tqmsg_control_field("${_control}" Package _package)
    tqmsg_control_field("${_control}" Version _version)
    tqmsg_control_field("${_control}" Architecture _arch)

    tqmsg_check_depends("${_control}" ${_arch})
    tqmsg_add_multi_arch(${_root} ${_package})
    tqmsg_strip(${_root})
    if(_package STREQUAL CPACK_TQMSG_LIBRARY_PACKAGE)
        tqmsg_finish_library(${_root} ${_package} ${_version} ${_arch} ${CPACK_TQMSG_DEV_PACKAGE})
    elseif(_package STREQUAL CPACK_TQMSG_JOURNAL_LIBRARY_PACKAGE)
        tqmsg_finish_library(${_root} ${_package} ${_version} ${_arch}
                             ${CPACK_TQMSG_JOURNAL_DEV_PACKAGE})
    endif()
    tqmsg_run(dpkg-deb --root-owner-group -Zxz --build ${_root} ${_deb})
    file(REMOVE_RECURSE ${_root})
endforeach()
