// MessageTableMap: exact file names, refusal of repeats, and clear.
#include <gtest/gtest.h>

#include <string>

#include "FreshProcess.h"
#include "MessageTable.h"

namespace {

TEST(TableRegistry, RegistersExactNamesOnce) {
    TempFile empty("empty.mc", "");
    std::string path = empty.path();
    MessageTableMap registry;
    MessageTable* first = new MessageTable(nullptr, path, false);
    MessageTable* second = new MessageTable(nullptr, path, false);
    std::string name = "a.mc", dotted = "./a.mc", upper = "A.mc";

    EXPECT_EQ(registry.get(name), nullptr);
    EXPECT_TRUE(registry.put(name, first));
    EXPECT_FALSE(registry.put(name, second));  // not taken over
    EXPECT_EQ(registry.get(name), first);
    EXPECT_EQ(registry.get(dotted), nullptr);
    EXPECT_EQ(registry.get(upper), nullptr);
    EXPECT_TRUE(registry.put(upper, nullptr));  // clear skips empty slots
    delete second;

    registry.clear();  // destroys `first`; a leak checker sees if it did not
    EXPECT_TRUE(registry.tables.empty());
    EXPECT_EQ(registry.get(name), nullptr);
    registry.clear();
}

}  // namespace
