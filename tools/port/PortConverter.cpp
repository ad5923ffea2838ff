// Decode, read, resolve, name and assemble: the steps of a conversion.
#include "PortConverter.h"

#include "HexText.h"
#include "IdentifierResolver.h"
#include "InputDecoder.h"
#include "NameRules.h"
#include "TextConversion.h"
#include "WindowsReader.h"

namespace {

std::vector<std::string> comments(const std::string& fileName, const PortOptions& options,
                                  const std::string& encoding) {
    return {"Converted by tqmsg port from " + fileName + " (read as " + encoding + ").",
            "Identifiers by the Windows rules: facility Application " +
                hex(options.resolve.applicationFacility) + ", numbers of a facility from " +
                std::to_string(options.resolve.firstMessageNumber) + "."};
}

MessageDefinition definition(const PortedMessage& message, const FileNames& names,
                             std::string symbolicName, const PortOptions& options,
                             TextConversionState& texts, PortReport& report) {
    MessageDefinition out;
    out.code = static_cast<long>(message.id & 0xFFFF);
    out.severity = names.severities[message.severity];
    out.facility = names.facilities[message.facility];
    out.symbolicName = std::move(symbolicName);
    for (const PortedText& text : message.texts) {
        out.texts.push_back({names.languages[text.language],
                             convertTextLines(text.lines, text.lineNumbers, texts, report),
                             options.finalLineBreak});
    }
    return out;
}

}  // namespace

PortResult portMessageFile(const std::string& bytes, const std::string& fileName,
                           const PortOptions& options, PortReport& report) {
    if (options.customerBit) {
        throw PortError{0,
                        "the customer bit (bit 29) cannot be set: this library composes "
                        "every identifier with it 0"};
    }
    DecodedInput input = decodeInput(bytes, options.codePage, report);
    PortedFile file =
        resolveIdentifiers(readWindowsSource(input.lines, report), options.resolve, report);
    FileNames names = nameEverything(file, fileName, options.namePrefix, report);

    PortResult result;
    result.encoding = input.encoding;
    result.content.comments = comments(fileName, options, input.encoding);
    result.content.languages = names.languageEntries;
    result.content.severities = names.severityEntries;
    result.content.facilities = names.facilityEntries;
    result.content.definitions.reserve(file.messages.size());
    TextConversionState texts;
    for (size_t i = 0; i < file.messages.size(); ++i) {
        const PortedMessage& message = file.messages[i];
        if (!names.headerNames[i].empty()) {
            result.headerNames.push_back({names.headerNames[i], message.id, i});
        }
        result.content.definitions.push_back(
            definition(message, names, std::move(names.symbolicNames[i]), options, texts, report));
    }
    return result;
}
