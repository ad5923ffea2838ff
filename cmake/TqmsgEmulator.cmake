# An i386 build on an x86-64 host whose kernel cannot execute i386 programs
# runs its tests under user-mode emulation (qemu-i386). We check by running a
# tiny program rather than assuming, so the same build also works where i386
# programs run natively. The environment variable TQMSG_FORCE_QEMU_I386=1
# chooses the emulator even where the kernel runs i386 programs, so that one
# machine can test both ways.
#
# The choice is made again at every configure: a build tree configured once
# with the variable goes back to native runs when configured without it. An
# emulator the user set (-DCMAKE_CROSSCOMPILING_EMULATOR=...) is left alone.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(_tqmsg_ours "${TQMSG_EMULATOR_CHOSEN}")
    if(CMAKE_CROSSCOMPILING_EMULATOR AND NOT CMAKE_CROSSCOMPILING_EMULATOR STREQUAL _tqmsg_ours)
        return()
    endif()

    set(_tqmsg_need_emulator OFF)
    if("$ENV{TQMSG_FORCE_QEMU_I386}" STREQUAL "1")
        set(_tqmsg_need_emulator ON)
        set(_tqmsg_why "TQMSG_FORCE_QEMU_I386=1")
    else()
        set(_probe_dir ${CMAKE_BINARY_DIR}/CMakeFiles/tqmsg-exec-probe)
        file(WRITE ${_probe_dir}/probe.c "int main(void) { return 0; }\n")
        try_run(_tqmsg_probe_run _tqmsg_probe_compile ${_probe_dir} ${_probe_dir}/probe.c)
        if(_tqmsg_probe_compile AND NOT _tqmsg_probe_run EQUAL 0)
            set(_tqmsg_need_emulator ON)
            set(_tqmsg_why "i386 programs do not run natively")
        endif()
    endif()

    if(_tqmsg_need_emulator)
        find_program(TQMSG_QEMU_I386 qemu-i386)
        if(TQMSG_QEMU_I386)
            message(STATUS "${_tqmsg_why}; tests run under ${TQMSG_QEMU_I386}")
            set(CMAKE_CROSSCOMPILING_EMULATOR ${TQMSG_QEMU_I386} CACHE FILEPATH
                "Runs the i386 test programs" FORCE)
            set(TQMSG_EMULATOR_CHOSEN ${TQMSG_QEMU_I386} CACHE INTERNAL
                "The emulator this file chose, as opposed to one the user set")
        elseif(_tqmsg_why STREQUAL "TQMSG_FORCE_QEMU_I386=1")
            message(FATAL_ERROR "TQMSG_FORCE_QEMU_I386=1 asks for qemu-i386, which is missing: "
                                "install Debian's qemu-user")
        else()
            message(WARNING "i386 programs do not run here and qemu-i386 is missing: "
                            "install Debian's qemu-user to run the tests")
        endif()
    elseif(_tqmsg_ours)
        message(STATUS "i386 programs run natively; tests no longer run under ${_tqmsg_ours}")
        unset(CMAKE_CROSSCOMPILING_EMULATOR CACHE)
        unset(TQMSG_EMULATOR_CHOSEN CACHE)
    endif()
endif()
