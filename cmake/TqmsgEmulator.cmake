# An i386 build on an x86-64 host whose kernel cannot execute i386 programs
# runs its tests under user-mode emulation (qemu-i386). We check by running a
# tiny program rather than assuming, so the same build also works where i386
# programs run natively.
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    set(_probe_dir ${CMAKE_BINARY_DIR}/CMakeFiles/tqmsg-exec-probe)
    file(WRITE ${_probe_dir}/probe.c "int main(void) { return 0; }\n")
    try_run(_tqmsg_probe_run _tqmsg_probe_compile ${_probe_dir} ${_probe_dir}/probe.c)
    if(_tqmsg_probe_compile AND NOT _tqmsg_probe_run EQUAL 0)
        find_program(TQMSG_QEMU_I386 qemu-i386)
        if(TQMSG_QEMU_I386)
            message(STATUS "i386 programs do not run natively; tests run under ${TQMSG_QEMU_I386}")
            set(CMAKE_CROSSCOMPILING_EMULATOR ${TQMSG_QEMU_I386} CACHE FILEPATH
                "Runs the i386 test programs" FORCE)
        else()
            message(WARNING "i386 programs do not run here and qemu-i386 is missing: "
                            "install Debian's qemu-user to run the tests")
        endif()
    endif()
endif()
