// The second example: a program whose messages are written for the Windows
// message compiler (windows/service_events.mc, shared with a Windows build).
// The build converts that file with tqmsg_add_messages(), which also writes
// service_events.h with the EVT_ identifiers and, for each, a typed function
// format_EVT_...(); the program loads the converted file and prints three of
// its events.
#include <iostream>
#include <string>

#include "MessageModule.h"
#include "service_events.h"

namespace {

// The build gives English this identifier (LANGUAGE English=0x409); without
// it, English keeps the built-in identifier 1 of the Windows compiler.
const int kEnglish = 0x409;

void printEvents() {
    std::string text;
    TQ_CompoundLangLookup(text, EVT_BACKUP_STARTED, kEnglish, "/home");
    std::cout << "started: " << text;
    // The typed function takes exactly the inserts' types: a text, then an
    // unsigned int (%2!u!).
    char slow[256];
    format_EVT_BACKUP_SLOW(slow, sizeof slow, kEnglish, "/home", 3u);
    std::cout << "slow:    " << slow;
    TQ_CompoundLangLookup(text, EVT_BACKUP_FAILED, kEnglish, "/home", 5u);
    std::cout << "failed:  " << text;
}

}  // namespace

int main(int argc, char** argv) {
    // The converted file: the build tree's copy, or the one given (installed).
    std::string file = argc > 1 ? argv[1] : MESSAGES_DIR "/service_events.mc";
    try {
        MessageModule module(file, false);
        printEvents();
    } catch (MessageTableParserException& e) {
        std::cerr << e.msg << '\n';
        return 1;
    } catch (MessageModuleException& e) {
        std::cerr << e.msg << '\n';
        return 1;
    }
    return 0;
}
