// Lookup and format of random messages of the catalogue, German texts, with
// the same three values for every message (a message uses 0 to 3 of them):
// tqmsg's TQ_CompoundLangLookup and its C interface's tqmsg_format, gettext's
// dgettext then snprintf, and a bare snprintf of the text already in hand (the
// floor).
#include <benchmark/benchmark.h>
#include <libintl.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "BenchData.h"
#include "MessageModule.h"
#include "tqmsg.h"

#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"

namespace {

const char* const kFirst = "/var/lib/data";
const int kSecond = 1234;
const char* const kThird = "backup.tar";

void loadCatalogueOnce() {
    static bool loaded = [] {
        static MessageModule module(benchFile("catalogue.mc"), false);
        return true;
    }();
    (void)loaded;
}

void bindGettextOnce(benchmark::State& state) {
    static bool translating = [] {
        if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) {
            return false;
        }
        bindtextdomain(kGettextDomain, benchFile("locale").c_str());
        const BenchMessage& first = benchMessages().front();
        return first.german == dgettext(kGettextDomain, first.english.c_str());
    }();
    if (!translating) {
        state.SkipWithError("gettext does not translate: is the de_DE.UTF-8 locale generated?");
    }
}

// What each caller passes, in the random order: a program passes an
// identifier (a constant in its code) to tqmsg, and a text (a literal in its
// data) to gettext or snprintf. Laid out in one array so the harness itself
// adds no cache miss per call.
template <typename T>
std::vector<T> inRandomOrder(T (*pick)(const BenchMessage&)) {
    std::vector<T> values;
    for (int index : randomOrder()) {
        values.push_back(pick(benchMessages()[index]));
    }
    return values;
}

// The identifiers both tqmsg interfaces are called with.
const std::vector<int>& randomIds() {
    static const std::vector<int> ids =
        inRandomOrder<int>([](const BenchMessage& message) { return message.id; });
    return ids;
}

// Formats the catalogue's messages in the random order through `format`,
// called as format(buffer, size, identifier) -> length, or -1 on failure.
template <typename Format>
void formatRandomMessages(benchmark::State& state, Format format) {
    loadCatalogueOnce();
    const std::vector<int>& ids = randomIds();
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        long length = format(buffer, sizeof buffer, ids[next++ & (ids.size() - 1)]);
        benchmark::DoNotOptimize(length);
        if (length < 0) {
            state.SkipWithError("lookup failed");
            break;
        }
    }
}

void BM_TqCompoundLangLookup(benchmark::State& state) {
    formatRandomMessages(state, [](char* buffer, unsigned size, int id) {
        return long{TQ_CompoundLangLookup(buffer, size, id, kGerman, kFirst, kSecond, kThird)};
    });
}

// The same calls through the C interface.
void BM_TqmsgFormat(benchmark::State& state) {
    formatRandomMessages(state, [](char* buffer, size_t size, long id) {
        return tqmsg_format(buffer, size, id, kGerman, kFirst, kSecond, kThird);
    });
}

void BM_GettextThenSnprintf(benchmark::State& state) {
    bindGettextOnce(state);
    static const std::vector<const char*> keys = inRandomOrder<const char*>(
        [](const BenchMessage& message) { return message.english.c_str(); });
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        const char* text = dgettext(kGettextDomain, keys[next++ & (keys.size() - 1)]);
        int length = std::snprintf(buffer, sizeof buffer, text, kFirst, kSecond, kThird);
        benchmark::DoNotOptimize(length);
    }
}

void BM_SnprintfFloor(benchmark::State& state) {
    static const std::vector<const char*> formats = inRandomOrder<const char*>(
        [](const BenchMessage& message) { return message.german.c_str(); });
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        const char* format = formats[next++ & (formats.size() - 1)];
        int length = std::snprintf(buffer, sizeof buffer, format, kFirst, kSecond, kThird);
        benchmark::DoNotOptimize(length);
    }
}

}  // namespace

BENCHMARK(BM_TqCompoundLangLookup);
BENCHMARK(BM_TqmsgFormat);
BENCHMARK(BM_GettextThenSnprintf);
BENCHMARK(BM_SnprintfFloor);
