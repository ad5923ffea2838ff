// The thread-local last-error text and the translation of exceptions into it.
#include "capi/Boundary.h"

#include <cstdio>
#include <exception>
#include <new>

#include "MessageModuleMaps.h"
#include "maps/FailureText.h"

namespace {

// Every failure text of the library fits FailureText; the buffer never
// allocates, so recording a failure cannot fail in turn.
thread_local char lastErrorText[FailureText::SIZE];

}  // namespace

void setLastError(const char* text) noexcept {
    std::snprintf(lastErrorText, sizeof lastErrorText, "%s", text);
}

void clearLastError() noexcept { lastErrorText[0] = '\0'; }

const char* lastError() noexcept { return lastErrorText; }

void recordCurrentFailure() noexcept {
    try {
        throw;
    } catch (const MessageTableParserException& failure) {
        setLastError(failure.msg.c_str());
    } catch (const MessageModuleException& failure) {
        setLastError(failure.msg.c_str());
    } catch (const std::bad_alloc&) {
        setLastError("Out of memory");
    } catch (const std::exception& failure) {
        FailureText text("Unexpected failure: %s", failure.what());
        setLastError(text.text);
    } catch (...) {
        setLastError("Unexpected failure of an unknown kind");
    }
}
