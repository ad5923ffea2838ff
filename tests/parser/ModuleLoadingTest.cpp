// Loading through the module: order, failures, registration and reloading;
// the example file of the format's documentation.
#include "ParserTestSupport.h"

namespace {

std::string message(const char* name, int id, const char* text) {
    return "MessageId=" + std::to_string(id) + "\nSymbolicName=" + name + "\n" + text + "\n.\n";
}

TEST(ModuleLoading, FilesLoadInOrderAndTheFirstFailureStopsTheList) {
    inFreshProcess([] {
        EXPECT_EQ(MessageModule::self(), nullptr);
        TempFile first("first.mc", ENGLISH + message("A", 1, "one"));
        TempFile second("second.mc", ENGLISH + message("B", 2, "two") + "oops\n");
        TempFile third("third.mc", ENGLISH + message("C", 3, "three"));
        std::vector<std::string> names = {first.path(), second.path(), third.path()};
        try {
            MessageModule module(names);
            ADD_FAILURE() << "the second file loaded";
        } catch (MessageTableParserException& error) {
            EXPECT_EQ(error.msg, at(second.path(), 6) + "Cannot understand input: \"oops\"");
        }
        EXPECT_EQ(MessageModule::self(), nullptr);
        EXPECT_NE(MessageModule::mtmap.get(names[0]), nullptr);
        EXPECT_EQ(MessageModule::mtmap.get(names[1]), nullptr);
        EXPECT_EQ(MessageModule::mtmap.get(names[2]), nullptr);
        EXPECT_NE(recordOf(0x409, 1), nullptr);
        EXPECT_NE(recordOf(0x409, 2), nullptr);  // stored before the error
        EXPECT_EQ(recordOf(0x409, 3), nullptr);
    });
}

TEST(ModuleLoading, AFileLoadsOncePerProcess) {
    inFreshProcess([] {
        TempFile messages("m.mc", ENGLISH + message("A", 1, "one"));
        TempFile headersOnly("h.mc", ENGLISH);
        MessageModule* first = new MessageModule(messages.path(), true);
        EXPECT_EQ(MessageModule::self(), first);
        EXPECT_THROW_MSG(MessageModule second(messages.path(), false), MessageModuleException,
                         "File: " + messages.path() + ", already loaded");
        EXPECT_EQ(MessageModule::self(), first);
        MessageModule::loadFile(first, headersOnly.path(), false);

        delete first;  // empties the registry, keeps the store
        EXPECT_TRUE(MessageModule::mtmap.tables.empty());
        ASSERT_NE(recordOf(0x409, 1), nullptr);
        EXPECT_EQ(recordOf(0x409, 1)->text, "one");
        MessageModule again;
        EXPECT_TRUE(MessageModule::loadFile(&again, headersOnly.path(), false));
        EXPECT_THROW_MSG(MessageModule::loadFile(&again, messages.path(), false),
                         MessageTableParserException,
                         at(messages.path(), 5) +
                             "Cannot insert <0x409, A, one> tuple into MultiLangMessageMap");
    });
}

TEST(ModuleLoading, TheDocumentedExampleFile) {
    inFreshProcess([] {
        loadText(
            "; example message file\n"
            "MessageIdTypedef=DWORD\n"
            "SeverityNames=(Success=0x0:SEV_OK\n"
            "    Informational=0x1:SEV_INFO\n"
            "    Warning=0x2:SEV_WARN\n"
            "    Error=0x3:SEV_ERR\n"
            "    )\n"
            "FacilityNames=(Runtime=0x2:FAC_RUNTIME\n"
            "    Storage=0x3:FAC_STORAGE)\n"
            "LanguageNames=(English=0x409:MSG00409)\n"
            "LanguageNames=(German=0x407:MSG00407)\n"
            "\n"
            "; id 0xC0020001\n"
            "MessageId=0x1\n"
            "Severity=Error\n"
            "Facility=Runtime\n"
            "SymbolicName=MSG_BAD_COMMAND\n"
            "Language=English\n"
            "OutputBase=16\n"
            "The command %1 is not valid.\n"
            ".\n"
            "Language=German\n"
            "Der Befehl %1 ist ungueltig.\n"
            ".\n"
            "; id 0xC0020002: severity, facility and language carry over\n"
            "MessageId=\n"
            "SymbolicName=MSG_DONE\n"
            "Each line of this\n"
            "   text is joined with a line feed.\n"
            ".\n");
        const long badCommand = toInt32(0xC0020001L), done = toInt32(0xC0020002L);
        EXPECT_EQ(idOf("MSG_BAD_COMMAND"), badCommand);
        EXPECT_EQ(idOf("MSG_DONE"), done);
        ASSERT_NE(recordOf(0x409, badCommand), nullptr);
        EXPECT_EQ(recordOf(0x409, badCommand)->text, "The command %1 is not valid.");
        ASSERT_NE(recordOf(0x407, badCommand), nullptr);
        EXPECT_EQ(recordOf(0x407, badCommand)->text, "Der Befehl %1 ist ungueltig.");
        ASSERT_NE(recordOf(0x407, done), nullptr);
        EXPECT_EQ(recordOf(0x407, done)->text,
                  "Each line of this\ntext is joined with a line feed.");
        EXPECT_EQ(recordOf(0x407, done)->facilityId, 2);
        EXPECT_EQ(MessageModule::mlmap.msgmap.size(), 3u);
    });
}

}  // namespace
