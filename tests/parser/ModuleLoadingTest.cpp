// Loading through the module: order, failures, registration and reloading.
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
        MessageModule::loadFile(first, headersOnly.path(), false);

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

}  // namespace
