// Lookup and format of random messages of the catalogue, German texts, with
// the same three values for every message (a message uses 0 to 3 of them):
// tqmsg's TQ_CompoundLangLookup, gettext's dgettext then snprintf, and a bare
// snprintf of the text already in hand (the floor).
#include <benchmark/benchmark.h>
#include <libintl.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "BenchData.h"
#include "MessageModule.h"

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

void BM_TqCompoundLangLookup(benchmark::State& state) {
    loadCatalogueOnce();
    const auto& messages = benchMessages();
    const auto& order = randomOrder();
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        const BenchMessage& message = messages[order[next++ & (order.size() - 1)]];
        int length = TQ_CompoundLangLookup(buffer, sizeof buffer, message.id, kGerman, kFirst,
                                           kSecond, kThird);
        benchmark::DoNotOptimize(length);
        if (length < 0) {
            state.SkipWithError("lookup failed");
            break;
        }
    }
}

void BM_GettextThenSnprintf(benchmark::State& state) {
    bindGettextOnce(state);
    const auto& messages = benchMessages();
    const auto& order = randomOrder();
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        const BenchMessage& message = messages[order[next++ & (order.size() - 1)]];
        const char* text = dgettext(kGettextDomain, message.english.c_str());
        int length = std::snprintf(buffer, sizeof buffer, text, kFirst, kSecond, kThird);
        benchmark::DoNotOptimize(length);
    }
}

void BM_SnprintfFloor(benchmark::State& state) {
    const auto& messages = benchMessages();
    const auto& order = randomOrder();
    char buffer[1024];
    size_t next = 0;
    for (auto _ : state) {
        const BenchMessage& message = messages[order[next++ & (order.size() - 1)]];
        int length =
            std::snprintf(buffer, sizeof buffer, message.german.c_str(), kFirst, kSecond, kThird);
        benchmark::DoNotOptimize(length);
    }
}

}  // namespace

BENCHMARK(BM_TqCompoundLangLookup);
BENCHMARK(BM_GettextThenSnprintf);
BENCHMARK(BM_SnprintfFloor);
