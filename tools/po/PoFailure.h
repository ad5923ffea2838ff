// The failure type of the translation round trip: its text is complete and
// names the file (and line) at fault; the tool prints it and exits with 1.
#ifndef TQMSG_PO_FAILURE_H
#define TQMSG_PO_FAILURE_H

#include <stdexcept>
#include <string>

struct PoFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

#endif  // TQMSG_PO_FAILURE_H
