# Warnings are on for the project's own targets (not for third-party code).
# With TQMSG_WERROR (the presets and CI turn it on) they are errors; it stays
# off by default so that a newer compiler's new warning does not break a
# user's build of the released sources.
function(tqmsg_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(TQMSG_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
