# examples_messages_header(MESSAGES HEADER): HEADER, the C header of the
# message identifiers of MESSAGES, written by the installed tool at build time.
# An i386 tool on a host that cannot run i386 programs needs an emulator:
# -DTQMSG_TOOL_EMULATOR=qemu-i386.
set(TQMSG_TOOL_EMULATOR "" CACHE STRING "Command that runs the installed tqmsg tool")

function(examples_messages_header messages header)
    get_filename_component(_dir ${header} DIRECTORY)
    add_custom_command(OUTPUT ${header}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${_dir}
        COMMAND ${TQMSG_TOOL_EMULATOR} $<TARGET_FILE:tqmsg::tool> header ${messages} -o ${header}
        DEPENDS ${messages} $<TARGET_FILE:tqmsg::tool>
        COMMENT "Generating messages.h from messages.mc"
        VERBATIM)
endfunction()
