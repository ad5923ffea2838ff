# TQMSG_SANITIZE=address,undefined or thread instruments every target of the
# build (GoogleTest included), and any report aborts the run.
if(TQMSG_SANITIZE)
    set(_tqmsg_san_flags -fsanitize=${TQMSG_SANITIZE} -fno-omit-frame-pointer)
    if(TQMSG_SANITIZE MATCHES "undefined")
        list(APPEND _tqmsg_san_flags -fno-sanitize-recover=all)
    endif()
    add_compile_options(${_tqmsg_san_flags})
    add_link_options(${_tqmsg_san_flags})
endif()
