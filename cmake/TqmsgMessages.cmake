# tqmsg_add_messages: the build step that turns message files written for the
# Windows message compiler into files this library loads, so that one .mc file
# stays the source of both the Windows and the Linux build.
#
#   tqmsg_add_messages(<target> <file.mc>...
#                      [CODE_PAGE <iconv name>]     8-bit input's code page
#                      [LANGUAGE <NAME>=<ID>...]    language identifiers to use
#                      [DESTINATION <dir>]          default: <datadir>/<target>
#                      [CHECK [STRICT]]             check the translations at build time
#                      [FUNCTIONS]                  typed format_<NAME> functions in the header
#                      [CATALOG <base>])            journal catalogue, message ID base
#
# For each file, `tqmsg port` runs at build time (again whenever the file or
# the tool changes) and writes <name>.mc and its header <name>.h into a
# directory of the target's own, which goes on the target's include path:
# the program keeps its `#include "<name>.h"`. The converted files are
# installed with the target; the target's property TQMSG_MESSAGES_DIR holds
# the build-tree directory, for running the program before installing it.
#
# CHECK runs `tqmsg check` on the converted files together whenever one of
# them changes, and fails the build on an error (an insert that two languages
# read differently, a name two files define); CHECK STRICT fails it on a
# warning too (a missing translation or insert). FUNCTIONS writes the header
# with `tqmsg header --functions`: beside each identifier, a function
# format_<NAME>(buf, size, language_id, inserts...) over the C interface
# whose parameters have the types of the message's inserts, so that a call
# with wrong arguments does not compile.
#
# With CATALOG, `tqmsg catalog` also writes <target>.catalog from the converted
# files: the systemd journal catalogue that explains the events libtqmsg-journal
# logs with that 128-bit message ID base (32 hexadecimal digits), installed
# into lib/systemd/catalog/ where `journalctl --update-catalog` finds it.
#
# The tool is the tqmsg_tool target when tqmsg is built in the same project,
# otherwise tqmsg::tool from find_package(tqmsg). TQMSG_TOOL_EMULATOR, when
# set, is a command that runs the tool (qemu-i386 for an i386 tool on a host
# that cannot run one); an in-tree tool uses CMAKE_CROSSCOMPILING_EMULATOR.
include_guard(GLOBAL)
include(GNUInstallDirs)

# Sets TOOL_VAR to the command that runs the tool and DEPENDS_VAR to what the
# generated files depend on besides their source.
function(_tqmsg_messages_tool tool_var depends_var)
    if(TARGET tqmsg_tool)
        set(_tool tqmsg_tool)
        set(_emulator ${CMAKE_CROSSCOMPILING_EMULATOR})
    elseif(TARGET tqmsg::tool)
        set(_tool tqmsg::tool)
        set(_emulator "")
    else()
        message(FATAL_ERROR "tqmsg_add_messages needs the tqmsg tool: build tqmsg with "
                            "TQMSG_BUILD_TOOLS, or install it (the Debian package tqmsg) and "
                            "call find_package(tqmsg COMPONENTS tool)")
    endif()
    if(TQMSG_TOOL_EMULATOR)
        set(_emulator ${TQMSG_TOOL_EMULATOR})
    endif()
    set(${tool_var} ${_emulator} $<TARGET_FILE:${_tool}> PARENT_SCOPE)
    set(${depends_var} ${_tool} $<TARGET_FILE:${_tool}> PARENT_SCOPE)
endfunction()

# Adds to OUTPUTS_VAR a stamp that exists once `tqmsg check` passed on the
# converted files (the .mc files among OUTPUTS_VAR), checked together.
function(_tqmsg_messages_check target tool tool_depends dir strict outputs_var)
    set(_converted ${${outputs_var}})
    list(FILTER _converted INCLUDE REGEX "\\.mc$")
    set(_strict "")
    if(strict)
        set(_strict --strict)
    endif()
    set(_stamp ${dir}/translations.checked)
    add_custom_command(OUTPUT ${_stamp}
        COMMAND ${tool} check ${_strict} ${_converted}
        COMMAND ${CMAKE_COMMAND} -E touch ${_stamp}
        DEPENDS ${_converted} ${tool_depends}
        COMMENT "Checking the translations of ${target}'s message files"
        VERBATIM)
    set(${outputs_var} ${${outputs_var}} ${_stamp} PARENT_SCOPE)
endfunction()

# Adds to `target` the build and installation of its journal catalogue, made
# from the converted message files given after `dir`.
function(_tqmsg_messages_catalog target dir base)
    if(NOT base MATCHES "^[0-9a-fA-F]+$")
        message(FATAL_ERROR "tqmsg_add_messages(${target}): CATALOG expects the message ID "
                            "base, 32 hexadecimal digits, got: ${base}")
    endif()
    string(LENGTH "${base}" _digits)
    if(NOT _digits EQUAL 32)
        message(FATAL_ERROR "tqmsg_add_messages(${target}): CATALOG expects the message ID "
                            "base, 32 hexadecimal digits, got: ${base}")
    endif()
    _tqmsg_messages_tool(_tool _tool_depends)
    set(_catalog ${dir}/${target}.catalog)
    add_custom_command(OUTPUT ${_catalog}
        COMMAND ${_tool} catalog ${ARGN} --base ${base} --defined-by ${target} -o ${_catalog}
        DEPENDS ${ARGN} ${_tool_depends}
        COMMENT "Writing the journal catalogue of ${target}"
        VERBATIM)
    target_sources(${target} PRIVATE ${_catalog})
    install(FILES ${_catalog} DESTINATION lib/systemd/catalog)
endfunction()

function(tqmsg_add_messages target)
    cmake_parse_arguments(PARSE_ARGV 1 _arg "CHECK;STRICT;FUNCTIONS" "CODE_PAGE;DESTINATION;CATALOG"
                          "LANGUAGE")
    set(_sources ${_arg_UNPARSED_ARGUMENTS})
    if(NOT TARGET ${target})
        message(FATAL_ERROR "tqmsg_add_messages: no target named ${target}")
    endif()
    if(NOT _sources)
        message(FATAL_ERROR "tqmsg_add_messages(${target}): no message file given")
    endif()
    if(_arg_STRICT AND NOT _arg_CHECK)
        message(FATAL_ERROR "tqmsg_add_messages(${target}): STRICT is an option of CHECK")
    endif()
    if(NOT _arg_DESTINATION)
        set(_arg_DESTINATION ${CMAKE_INSTALL_DATADIR}/${target})
    endif()
    set(_options "")
    if(_arg_CODE_PAGE)
        list(APPEND _options --code-page ${_arg_CODE_PAGE})
    endif()
    foreach(_language IN LISTS _arg_LANGUAGE)
        if(NOT _language MATCHES "^[^=]+=.+$")
            message(FATAL_ERROR "tqmsg_add_messages(${target}): LANGUAGE expects NAME=ID, "
                                "got: ${_language}")
        endif()
        list(APPEND _options --language ${_language})
    endforeach()
    _tqmsg_messages_tool(_tool _tool_depends)

    set(_dir ${CMAKE_CURRENT_BINARY_DIR}/tqmsg_messages/${target})
    set(_outputs "")
    set(_names "")
    foreach(_source IN LISTS _sources)
        get_filename_component(_source ${_source} ABSOLUTE)
        get_filename_component(_name ${_source} NAME_WLE)
        if(_name IN_LIST _names)
            message(FATAL_ERROR "tqmsg_add_messages(${target}): two message files named "
                                "${_name}: their outputs would overwrite each other")
        endif()
        list(APPEND _names ${_name})
        set(_converted ${_dir}/${_name}.mc)
        set(_header ${_dir}/${_name}.h)
        set(_steps COMMAND ${CMAKE_COMMAND} -E make_directory ${_dir}
            COMMAND ${_tool} port ${_source} -o ${_converted} --header ${_header} ${_options})
        if(_arg_FUNCTIONS)
            # The same header again, with the typed functions after the identifiers.
            list(APPEND _steps COMMAND ${_tool} header --functions ${_converted} -o ${_header})
        endif()
        add_custom_command(OUTPUT ${_converted} ${_header}
            ${_steps}
            DEPENDS ${_source} ${_tool_depends}
            COMMENT "Converting ${_name}.mc for tqmsg (${target})"
            VERBATIM)
        list(APPEND _outputs ${_converted} ${_header})
        install(FILES ${_converted} DESTINATION ${_arg_DESTINATION})
    endforeach()
    if(_arg_CHECK)
        _tqmsg_messages_check(${target} "${_tool}" "${_tool_depends}" ${_dir} ${_arg_STRICT}
                              _outputs)
    endif()
    target_sources(${target} PRIVATE ${_outputs})
    if(_arg_CATALOG)
        list(FILTER _outputs INCLUDE REGEX "\\.mc$")
        _tqmsg_messages_catalog(${target} ${_dir} ${_arg_CATALOG} ${_outputs})
    endif()
    target_include_directories(${target} PRIVATE ${_dir})
    set_target_properties(${target} PROPERTIES TQMSG_MESSAGES_DIR ${_dir})
endfunction()
