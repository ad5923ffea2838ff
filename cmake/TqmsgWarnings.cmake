# Warnings are errors on the project's own targets (not on third-party code).
function(tqmsg_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()
