// MessageModule::describeInsertFormat and findInserts: the formatter's own
// classifier and scan, offered to programs that handle message texts.
#include <string>
#include <vector>

#include "MessageModule.h"
#include "module/InsertConversion.h"
#include "module/InsertScan.h"

namespace {

InsertFormatInfo::Kind kindOf(InsertValueType type) {
    switch (type) {
        case InsertValueType::None:
            return InsertFormatInfo::NO_VALUE;
        case InsertValueType::Int:
        case InsertValueType::Long:
        case InsertValueType::LongLong:
        case InsertValueType::IntMax:
        case InsertValueType::SignedSize:
        case InsertValueType::PtrDiff:
            return InsertFormatInfo::SIGNED_INTEGER;
        case InsertValueType::UInt:
        case InsertValueType::ULong:
        case InsertValueType::ULongLong:
        case InsertValueType::UIntMax:
        case InsertValueType::Size:
            return InsertFormatInfo::UNSIGNED_INTEGER;
        case InsertValueType::Char:
            return InsertFormatInfo::CHARACTER;
        case InsertValueType::Double:
        case InsertValueType::LongDouble:
            return InsertFormatInfo::FLOATING;
        case InsertValueType::Text:
            return InsertFormatInfo::TEXT;
        case InsertValueType::Pointer:
            return InsertFormatInfo::POINTER;
    }
    return InsertFormatInfo::REFUSED;
}

// The size of the value a variable argument list gives for `type`.
int bytesOf(InsertValueType type) {
    switch (type) {
        case InsertValueType::None:
            return 0;
        case InsertValueType::Int:
        case InsertValueType::UInt:
        case InsertValueType::Char:
            return sizeof(int);
        case InsertValueType::Long:
        case InsertValueType::ULong:
            return sizeof(long);
        case InsertValueType::LongLong:
        case InsertValueType::ULongLong:
            return sizeof(long long);
        case InsertValueType::IntMax:
        case InsertValueType::UIntMax:
            return sizeof(intmax_t);
        case InsertValueType::SignedSize:
        case InsertValueType::Size:
            return sizeof(size_t);
        case InsertValueType::PtrDiff:
            return sizeof(ptrdiff_t);
        case InsertValueType::Double:
            return sizeof(double);
        case InsertValueType::LongDouble:
            return sizeof(long double);
        case InsertValueType::Text:
            return sizeof(const char*);
        case InsertValueType::Pointer:
            return sizeof(void*);
    }
    return 0;
}

InsertFormatInfo describe(const char* format, std::size_t length) {
    InsertConversion conversion;
    classifyInsertFormat(format, length, conversion);
    InsertFormatInfo info;
    if (conversion.refusal != nullptr) {
        info.refusal = conversion.refusal;
        return info;
    }
    info.kind = kindOf(conversion.type);
    info.valueBytes = bytesOf(conversion.type);
    info.printfFormat = printfFormatOf(format, conversion);
    return info;
}

// Collects the inserts the scan reports; the rest of the text is of no use.
struct InsertCollector {
    std::vector<InsertUse> inserts;

    void literal(const char*, std::size_t) {}
    void escapeStart() {}
    void lineFeed() {}
    void lineBreak() {}
    void insert(int number, const char* format, std::size_t formatLength) {
        InsertUse use;
        use.number = number;
        use.format.assign(format, formatLength);
        use.info = describe(format, formatLength);
        inserts.push_back(std::move(use));
    }
};

}  // namespace

InsertFormatInfo MessageModule::describeInsertFormat(const std::string& format) {
    return describe(format.c_str(), format.size());
}

std::vector<InsertUse> MessageModule::findInserts(const std::string& text) {
    InsertCollector collector;
    InsertScanner<InsertCollector>(text.c_str(), text.size(), collector).run();
    return std::move(collector.inserts);
}
