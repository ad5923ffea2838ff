// Insert sets and their differences.
#include "InsertCheck.h"

#include <map>

#include "MessageModule.h"

namespace {

// "%2!lu!", or "%2" for the default format.
std::string written(const std::pair<int, std::string>& insert) {
    std::string text = "%" + std::to_string(insert.first);
    if (insert.second != "%s") text += "!" + insert.second.substr(1) + "!";
    return text;
}

std::string listOf(const std::set<std::string>& formats, int number) {
    std::string text;
    for (const std::string& format : formats) {
        text += (text.empty() ? "" : " and ") + written({number, format});
    }
    return text;
}

// Insert number -> its formats.
std::map<int, std::set<std::string>> byNumber(const InsertSet& inserts) {
    std::map<int, std::set<std::string>> grouped;
    for (const auto& insert : inserts) grouped[insert.first].insert(insert.second);
    return grouped;
}

}  // namespace

InsertSet insertsOf(const std::string& text) {
    InsertSet inserts;
    for (const InsertUse& use : MessageModule::findInserts(text)) {
        inserts.insert({use.number, use.format});
    }
    return inserts;
}

std::string insertList(const InsertSet& inserts) {
    std::string text;
    for (const auto& insert : inserts) text += (text.empty() ? "" : ", ") + written(insert);
    return text;
}

std::string insertChanges(const InsertSet& source, const InsertSet& translation) {
    std::map<int, std::set<std::string>> kept = byNumber(source), used = byNumber(translation);
    std::string changes;
    auto add = [&changes](const std::string& change) {
        changes += (changes.empty() ? "" : "; ") + change;
    };
    for (const auto& insert : kept) {
        auto found = used.find(insert.first);
        if (found == used.end()) {
            add("loses " + listOf(insert.second, insert.first));
        } else if (found->second != insert.second) {
            add("changes " + listOf(insert.second, insert.first) + " to " +
                listOf(found->second, insert.first));
        }
    }
    for (const auto& insert : used) {
        if (!kept.count(insert.first)) add("adds " + listOf(insert.second, insert.first));
    }
    return changes;
}
