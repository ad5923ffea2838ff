// Gives each fuzz input an empty message store, as if it ran in a new process.
//
// The library keeps every loaded text for the life of the process and refuses
// a file that defines a (language, identifier) pair or binds a symbolic name
// already stored. A target that loads one file per input would therefore see
// most inputs fail on the identifiers of earlier ones, stopping the parse at
// the first message they share, and could not tell a file that does not load
// from one that merely met its predecessors. Running each load in a child
// process gives the right answer but costs a fork per input and hides the
// child's coverage from the fuzzer.
//
// Instead, after each input the harness destroys the store (its destructor
// frees every record and key) and constructs a new, empty one in the same
// place. This is safe only between inputs: by then the input's MessageModule
// has been destroyed, which empties the registry of tables, and the library
// keeps no pointer into the store from one call to the next.
#ifndef TQMSG_FUZZ_FRESH_STORE_H
#define TQMSG_FUZZ_FRESH_STORE_H

#include <new>

#include "MessageModule.h"

// Empties the store when it goes out of scope, however the input ends.
class FreshStoreAfterInput {
public:
    FreshStoreAfterInput() = default;
    FreshStoreAfterInput(const FreshStoreAfterInput&) = delete;
    FreshStoreAfterInput& operator=(const FreshStoreAfterInput&) = delete;
    ~FreshStoreAfterInput() {
        MessageModule::mlmap.~MultiLangMessageMap();
        new (&MessageModule::mlmap) MultiLangMessageMap();
    }
};

#endif  // TQMSG_FUZZ_FRESH_STORE_H
