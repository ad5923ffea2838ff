// Internal: the C interface's boundary. Every exported function runs its body
// through `atCBoundary`, which is where every exception stops and where the
// calling thread's last-error text is kept.
#ifndef TQMSG_CAPI_BOUNDARY_H
#define TQMSG_CAPI_BOUNDARY_H

// Makes `text` the calling thread's last error (cut to the library's failure
// text size).
void setLastError(const char* text) noexcept;

// Empties the calling thread's last error.
void clearLastError() noexcept;

// The calling thread's last error, "" when there is none.
const char* lastError() noexcept;

// Records the exception being handled as the thread's last error: the
// library's own text, or the name of what went wrong. Call only from a catch
// block.
void recordCurrentFailure() noexcept;

// Runs `body` with the thread's last error cleared and returns its result; any
// exception it throws is recorded and `failed` returned instead.
template <typename Result, typename Body>
Result atCBoundary(Result failed, Body body) noexcept {
    clearLastError();
    try {
        return body();
    } catch (...) {
        recordCurrentFailure();
        return failed;
    }
}

#endif  // TQMSG_CAPI_BOUNDARY_H
