// Gives every message of a Windows message file its identifier by the
// Windows rules: built-in severities (Success 0 to Error 3), facilities
// (System 0x0FF, Application) and language (English 1), the file's own
// lists, Severity, Facility and Language carried from message to message, and
// one "previous number" per facility for empty and +n MessageId values.
#ifndef TQMSG_PORT_IDENTIFIER_RESOLVER_H
#define TQMSG_PORT_IDENTIFIER_RESOLVER_H

#include "PortReport.h"
#include "PortedFile.h"
#include "WindowsSource.h"

// Throws PortError for an undeclared name, a value out of range or two texts
// for one identifier in one language.
PortedFile resolveIdentifiers(WindowsSource source, const ResolveOptions& options,
                              PortReport& report);

#endif  // TQMSG_PORT_IDENTIFIER_RESOLVER_H
