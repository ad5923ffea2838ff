// The class constants of MessageTable: keywords (lower case, as they are
// searched for in lower-cased lines), markers and the seeded names and ids.
#include "MessageTable.h"

const char* MessageTable::COMMENT_PREFIX = ";";
const char* MessageTable::LANGUAGE_NAMES = "languagenames";
const char* MessageTable::FACILITY_NAMES = "facilitynames";
const char* MessageTable::SEV_NAMES = "severitynames";
const char* MessageTable::MESSAGE_ID_TYPEDEF = "messageidtypedef";
const char* MessageTable::LANGUAGE = "language";
const char* MessageTable::MESSAGE_ID = "messageid";
const char* MessageTable::HEADER_NAMES_BEGIN = "(";
const char* MessageTable::HEADER_NAMES_END = ")";
const char* MessageTable::MESSAGE_FACILITY = "facility";
const char* MessageTable::MESSAGE_SEVERITY = "severity";
const char* MessageTable::MESSAGE_LANGUAGE = "language";
const char* MessageTable::MESSAGE_OUTPUT_BASE = "outputbase";
const char* MessageTable::MESSAGE_SYMBOLIC_NAME = "symbolicname";
const char* MessageTable::MESSAGE_END_MARKER = ".";
const char* MessageTable::DEFAULT_FIRST_MESSAGE_LANGUAGE = "English";
const char* MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY = "Application";
const long MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY_ID = 0;
const char* MessageTable::DEFAULT_FIRST_MESSAGE_SEVERITY = "Success";
const char* MessageTable::SEV_SUCCESS = "Success";
const long MessageTable::SEV_SUCCESS_ID = 0;
const char* MessageTable::SEV_INFORMATIONAL = "Informational";
const long MessageTable::SEV_INFORMATIONAL_ID = 1;
const char* MessageTable::SEV_WARNING = "Warning";
const long MessageTable::SEV_WARNING_ID = 2;
const char* MessageTable::SEV_ERROR = "Error";
const long MessageTable::SEV_ERROR_ID = 3;
const char MessageTable::DEFAULT_CUSTOMER_CODE = 0;
const char MessageTable::DEFAULT_RESERVED_BIT_CODE = 0;
