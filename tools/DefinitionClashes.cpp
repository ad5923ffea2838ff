// Definitions of several files, each learned from a load of its own.
#include "DefinitionClashes.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "FileMessages.h"
#include "MessageModule.h"

namespace {

// One stored text of a file, as its load recorded it.
struct Definition {
    std::string name;  // symbolic name, "" without one
    long languageId;
    long messageId;
    int line;
};

// In the child: loads `file` and writes one line "line language id name" per
// stored text to `out`.
void writeDefinitions(const std::string& file, int out) {
    MessageModule module;
    std::string name = file;
    try {
        MessageModule::loadFile(&module, name, false);
    } catch (MessageTableParserException&) {
    } catch (MessageModuleException&) {
    }
    std::ostringstream text;
    for (auto& entry : MessageModule::mtmap.tables) {
        for (const FileMessage& message : fileMessages(*entry.second)) {
            bool named = !message.texts.front().message->symbolicName.empty();
            for (const TextOfLanguage& language : message.texts) {
                text << language.line << ' ' << language.languageId << ' ' << message.id << ' '
                     << (named ? message.name : "") << '\n';
            }
        }
    }
    std::string bytes = text.str();
    for (size_t written = 0; written < bytes.size();) {
        ssize_t n = ::write(out, bytes.data() + written, bytes.size() - written);
        if (n <= 0) break;
        written += static_cast<size_t>(n);
    }
}

std::vector<Definition> parseDefinitions(const std::string& bytes) {
    std::vector<Definition> definitions;
    std::istringstream in(bytes);
    for (Definition d; in >> d.line >> d.languageId >> d.messageId;) {
        in.get();  // the space before the name
        std::getline(in, d.name);
        definitions.push_back(d);
    }
    return definitions;
}

// The definitions that loading `file` alone records; none when the child
// cannot be started.
std::vector<Definition> definitionsOf(const std::string& file) {
    int pipeEnds[2];
    if (::pipe(pipeEnds) != 0) return {};
    pid_t child = ::fork();
    if (child == 0) {
        ::close(pipeEnds[0]);
        writeDefinitions(file, pipeEnds[1]);
        ::_exit(0);
    }
    ::close(pipeEnds[1]);
    std::string bytes;
    char buffer[4096];
    for (ssize_t n; child > 0 && (n = ::read(pipeEnds[0], buffer, sizeof(buffer))) > 0;) {
        bytes.append(buffer, static_cast<size_t>(n));
    }
    ::close(pipeEnds[0]);
    if (child > 0) ::waitpid(child, nullptr, 0);
    return parseDefinitions(bytes);
}

struct Place {
    std::string file;
    int line;
};

class ClashFinder {
public:
    // Notes one definition of `file`; a clash with another file's is recorded
    // once per symbolic name, and once per pair not already explained by its name.
    void add(const std::string& file, const Definition& d) {
        Place place{file, d.line};
        if (!d.name.empty()) {
            auto name = names_.emplace(d.name, place);
            const Place& first = name.first->second;
            // Within one file, a repeated name is the load's own business.
            if (!name.second && first.file != file) {
                if (reportedNames_.insert(d.name).second)
                    report("symbolic name " + d.name, first, place);
                return;
            }
        }
        auto pair = pairs_.emplace(std::make_pair(d.languageId, d.messageId), place);
        const Place& first = pair.first->second;
        if (!pair.second && first.file != file) {
            report("message " + hexIdentifier(d.messageId) + " in language " +
                       std::to_string(d.languageId),
                   first, place);
        }
    }
    std::vector<DefinitionClash> clashes;

private:
    void report(const std::string& what, const Place& first, const Place& second) {
        clashes.push_back({what, first.file, first.line, second.file, second.line});
    }
    std::map<std::string, Place> names_;
    std::set<std::string> reportedNames_;
    std::map<std::pair<long, long>, Place> pairs_;
};

}  // namespace

std::vector<DefinitionClash> findDefinitionClashes(const std::vector<std::string>& files) {
    ClashFinder finder;
    std::set<std::string> seen;
    for (const std::string& file : files) {
        if (!seen.insert(file).second) continue;  // loading it twice fails on its own
        for (const Definition& d : definitionsOf(file)) finder.add(file, d);
    }
    return finder.clashes;
}
