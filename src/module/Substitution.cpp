// MessageModule::substituteArg: one insert, formatted and written under the width rule.
#include <string>

#include "MessageModule.h"
#include "module/InsertFormat.h"

std::string MessageModule::substituteArg(std::ostringstream& out, int argIndex, std::string& format,
                                         int& column, int maxWidth, char** Arguments,
                                         char** argArray) {
    char buffer[INSERT_BUFFER_SIZE];
    InsertText insert =
        formatInsert(argIndex, format.c_str(), format.size(), Arguments, argArray, buffer);
    writeInsert(out, insert, column, maxWidth);
    return std::string(insert.data, insert.length);
}
