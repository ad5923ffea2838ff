// Loading through the module: order, failures, registration and reloading;
// the renderings of a table, of the registry and of the module.
#include "ParserTestSupport.h"

namespace {

std::string message(const char* name, int id, const char* text) {
    return ENGLISH + "MessageId=" + std::to_string(id) + "\nSymbolicName=" + name + "\n" + text +
           "\n.\n";
}

TEST(ModuleLoading, FilesLoadInOrderAndTheFirstFailureStopsTheList) {
    inFreshProcess([] {
        EXPECT_EQ(MessageModule::self(), nullptr);
        TempFile first("first.mc", message("A", 1, "one"));
        TempFile second("second.mc", message("B", 2, "two") + "oops\n");
        TempFile third("third.mc", message("C", 3, "three"));
        std::vector<std::string> names = {first.path(), second.path(), third.path()};
        EXPECT_EQ(thrownBy([&] { MessageModule module(names); }),
                  at(second.path(), 6) + "Cannot understand input: \"oops\"");
        EXPECT_EQ(MessageModule::self(), nullptr);
        EXPECT_NE(MessageModule::mtmap.get(names[0]), nullptr);
        EXPECT_EQ(MessageModule::mtmap.get(names[1]), nullptr);
        EXPECT_EQ(MessageModule::mtmap.get(names[2]), nullptr);
        EXPECT_EQ(textOf(0x409, 2), "two");  // stored before the error
        EXPECT_EQ(textOf(0x409, 3), "<none>");
    });
}

TEST(ModuleLoading, AFileLoadsOncePerProcess) {
    inFreshProcess([] {
        TempFile messages("m.mc", message("A", 1, "one"));
        TempFile headersOnly("h.mc", ENGLISH);
        MessageModule* first = new MessageModule(messages.path(), true);
        EXPECT_EQ(MessageModule::self(), first);
        EXPECT_EQ(
            thrownBy<MessageModuleException>([&] { MessageModule second(messages.path(), false); }),
            "File: " + messages.path() + ", already loaded");
        EXPECT_EQ(MessageModule::self(), first);
        TempFile indented("i.mc", message("B", 2, "  two"));
        std::vector<std::string> more = {headersOnly.path(), indented.path()};
        MessageModule::loadFiles(first, more, true);
        EXPECT_EQ(textOf(0x409, 2), "  two");  // the trimming flag reaches every file

        delete first;  // empties the registry, keeps the store
        EXPECT_TRUE(MessageModule::mtmap.tables.empty());
        EXPECT_EQ(textOf(0x409, 1), "one");
        MessageModule again;
        EXPECT_TRUE(MessageModule::loadFile(&again, headersOnly.path(), false));
        EXPECT_EQ(thrownBy([&] { MessageModule::loadFile(&again, messages.path(), false); }),
                  at(messages.path(), 5) +
                      "Cannot insert <0x409, A, one> tuple into MultiLangMessageMap");
    });
}

const char* const SEEDED_TABLE =
    "{\n"
    "Lang-Map: \n"
    "[Forward:->]\n"
    "[Reverse:->]\n"
    "\n"
    "Facility-Map:\n"
    "|facility=0x0 (0);msg-id=0x1 (1);Name=\"\";def-msg-id=0x1 (1)\n"
    "\n"
    "Severity-Map:\n"
    "[Forward:->|key=\"error\"; val=\"0x3 (3)\"|key=\"informational\"; val=\"0x1 (1)\"|"
    "key=\"success\"; val=\"0x0 (0)\"|key=\"warning\"; val=\"0x2 (2)\"]\n"
    "[Reverse:->|key=\"0x0 (0)\"; val=\"Success\"|key=\"0x1 (1)\"; val=\"Informational\"|"
    "key=\"0x2 (2)\"; val=\"Warning\"|key=\"0x3 (3)\"; val=\"Error\"]\n"
    "}\n";

TEST(Renderings, ATableShowsItsThreeMaps) {
    inFreshProcess([] {
        MessageTable* table = loadText("; only a comment\n");
        ASSERT_NE(table, nullptr);
        std::ostringstream out;
        out << *table;
        EXPECT_EQ(out.str(), SEEDED_TABLE);
        EXPECT_EQ(table->toString(), SEEDED_TABLE);
    });
}

// The registry renders each table under its name, the module the registry
// and then the store (whose own rendering the maps tests check).
TEST(Renderings, TheModuleShowsTheRegistryThenTheStore) {
    inFreshProcess([] {
        MessageModule module, other;
        EXPECT_EQ(module.toString(), "Message-Tables: \n\nMulti-Lang-Message-Map: (0 entries)\n");
        MessageTable* tableA = loadText("; second by load order\n", false, "a.mc");
        MessageTable* tableB = loadText(ENGLISH + "LanguageNames=(German=0x407:G)\n" +
                                            "MessageId=0x1\nSymbolicName=M\nEnglish\n.\n"
                                            "Language=German\nDeutsch\n.\n",
                                        false, "B.mc");
        ASSERT_TRUE(tableA != nullptr && tableB != nullptr);
        std::string prefix = "tqmsg_" + std::to_string(getpid()) + "_";
        std::string registry = "TABLE-ID: " + prefix + "B.mc\nTABLE-CONTENTS: \n" +
                               tableB->toString() + "TABLE-ID: " + prefix +
                               "a.mc\nTABLE-CONTENTS: \n" + tableA->toString();
        EXPECT_EQ(MessageModule::mtmap.toString(), registry);
        const std::string expected = "Message-Tables: \n" + registry +
                                     "\nMulti-Lang-Message-Map: (2 entries)\n" +
                                     MessageModule::mlmap.toString();
        EXPECT_EQ(module.toString(), expected);
        std::ostringstream out;
        out << std::hex << other;
        EXPECT_EQ(out.str(), expected);
    });
}

}  // namespace
