// A small program using tqmsg: it loads messages.mc once and prints messages
// in English and German through the lookup functions and formatMessage. The
// MSG_ identifiers come from messages.h, which `tqmsg header` generates from
// the same file at build time.
#include <cstdint>
#include <iostream>
#include <string>

#include "MessageModule.h"
#include "messages.h"

namespace {

const int kEnglish = 0x409;
const int kGerman = 0x407;
const int kFrench = 0x40C;  // not in the file: shows a failed lookup

void lookups() {
    // A message without inserts, into a caller's buffer.
    char buffer[256];
    std::cout << "1: " << TQ_LangLookup(MSG_SERVICE_STOPPING, kEnglish, buffer, sizeof buffer)
              << '\n';

    // The same into a std::string; an unknown language gives an empty string
    // (and the library prints its reason on standard output).
    std::string text;
    TQ_LangLookup(MSG_SERVICE_STOPPING, kFrench, text);
    std::cout << "2: [" << text << "]\n";

    // Inserts from a variable argument list, into a buffer and into a string.
    unsigned long needed = 1048576, available = 4096;
    int stored = TQ_CompoundLangLookup(buffer, sizeof buffer, MSG_DISK_FULL, kEnglish, "/srv",
                                       needed, available);
    std::cout << "3: (" << stored << " bytes) " << buffer << '\n';
    TQ_CompoundLangLookup(text, MSG_JOB_LATE, kGerman, "nightly", 12);
    std::cout << "4: " << text << '\n';
    TQ_CompoundLangLookup(text, MSG_CHECKSUM, kEnglish, 0xBEEF, "/dev/sdb");
    std::cout << "5: " << text << '\n';
}

void formatWithArray() {
    // formatMessage itself: an argument array (element N-1 is insert %N, an
    // integer where the insert converts one) and a buffer allocated for us.
    char* args[] = {const_cast<char*>("weekly"), reinterpret_cast<char*>(intptr_t{1200}),
                    reinterpret_cast<char*>(intptr_t{35})};
    char* result = nullptr;
    long flags = _FORMAT_MESSAGE_ALLOCATE_BUFFER | _FORMAT_MESSAGE_ARGUMENT_ARRAY;
    long size =
        MessageModule::formatMessage(flags, nullptr, MSG_JOB_DONE, kGerman, &result, 0, args);
    if (size > 0) {
        std::cout << "6: " << result << '\n';
        delete[] result;
    }
    // A maximum line width of 30 puts a long insert on a line of its own.
    char* path[] = {const_cast<char*>("/var/backups/host-01/daily")};
    flags |= 30;
    if (MessageModule::formatMessage(flags, nullptr, MSG_PROMPT_RETRY, kEnglish, &result, 0, path) >
        0) {
        std::cout << "7: " << result << "<end>\n";
        delete[] result;
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::string file = argc > 1 ? argv[1] : MESSAGES_FILE;
    try {
        MessageModule module(file, false);  // load once; the texts stay for the process
        lookups();
        formatWithArray();
    } catch (MessageTableParserException& e) {
        std::cerr << e.msg << '\n';
        return 1;
    } catch (MessageModuleException& e) {
        std::cerr << e.msg << '\n';
        return 1;
    }
    return 0;
}
