// Generating the typed message functions.
#include "TypedFunctions.h"

#include <sstream>

#include "InsertCType.h"

namespace {

// The formatter reaches insert N of a variable argument list by reading the
// N - 1 values before it as ints. That steps over exactly one value of any
// integer or pointer type that fills one int slot on i386 (and one register
// slot on x86-64); a floating-point value (passed apart from the integers on
// x86-64) or an 8-byte value on i386 would throw the later inserts off.
bool steppedOver(const InsertUse& use) {
    return use.info.kind != InsertFormatInfo::FLOATING && insertCType(use.info).i386Bytes == 4;
}

// Why `comparison` allows no function, or "".
std::string refusalReason(const InsertComparison& comparison) {
    for (const InsertProblem& problem : comparison.problems) {
        if (problem.kind != InsertProblem::MISSING) return problem.description;
    }
    int expected = 1;
    for (const auto& insert : comparison.inserts) {
        if (insert.first != expected) {
            return "its inserts skip %" + std::to_string(expected) + ", so no argument can be " +
                   "passed for %" + std::to_string(insert.first);
        }
        ++expected;
    }
    for (const auto& insert : comparison.inserts) {
        if (insert.first == expected - 1 || steppedOver(insert.second)) continue;
        return "insert " + writtenInsert(insert.second) + " reads " +
               insertCType(insert.second.info).name + ", which the formatter cannot step over " +
               "to reach the inserts after it";
    }
    return "";
}

std::string parameter(const InsertUse& use) {
    std::string type = insertCType(use.info).name;
    bool pointer = type.back() == '*';
    return type + (pointer ? "" : " ") + "insert" + std::to_string(use.number);
}

void writeFunction(std::ostream& out, const std::string& name, const InsertComparison& inserts) {
    std::string parameters = "char *buf, size_t size, long language_id";
    std::string arguments = "buf, size, " + name + ", language_id";
    for (const auto& insert : inserts.inserts) {
        parameters += ", " + parameter(insert.second);
        arguments += ", insert" + std::to_string(insert.first);
    }
    out << "\nstatic inline long format_" << name << "(" << parameters << ") {\n"
        << "    return tqmsg_format(" << arguments << ");\n}\n";
}

}  // namespace

TypedFunctions typedFunctions(const std::vector<NamedMessage>& messages) {
    TypedFunctions result;
    std::ostringstream out;
    out << "\n/* format_<name>(buf, size, language_id, inserts...): the message formatted by\n"
        << " * tqmsg_format, its inserts typed as its texts read them. */\n"
        << "#include \"tqmsg.h\"\n";
    for (const NamedMessage& message : messages) {
        InsertComparison inserts = compareInserts(message.texts);
        std::string reason = refusalReason(inserts);
        if (reason.empty()) {
            writeFunction(out, message.name, inserts);
        } else {
            result.warnings.push_back(message.name + ": no function: " + reason);
        }
    }
    result.text = out.str();
    return result;
}
