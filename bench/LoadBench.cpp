// Loading: milliseconds and MB/s for the largest real message file and for
// the generated catalogue, and the resident memory the catalogue adds against
// gettext's after every message has been looked up once (counter
// "resident_MB"). Each measurement runs in a fresh child process, because the
// store keeps what it loaded; this file is linked first so that these run
// before the lookup benchmarks load the catalogue into the parent.
#include <benchmark/benchmark.h>
#include <libintl.h>

#include <chrono>
#include <clocale>
#include <fstream>
#include <string>

#include "BenchData.h"
#include "MessageModule.h"

namespace {

long fileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return static_cast<long>(in.tellg());
}

void loadFile(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        double seconds = inChild([&] {
            if (!MessageModule::mlmap.msgmap.empty()) {
                return -1.0;
            }
            auto start = std::chrono::steady_clock::now();
            try {
                MessageModule module(path, false);
            } catch (MessageTableParserException& e) {
                std::fprintf(stderr, "%s\n", e.msg.c_str());
                return -1.0;
            }
            std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
            return elapsed.count();
        });
        if (seconds < 0) {
            state.SkipWithError("the load failed");
            return;
        }
        state.SetIterationTime(seconds);
    }
    state.SetBytesProcessed(state.iterations() * fileSize(path));
}

void BM_LoadLargestCorpusFile(benchmark::State& state) { loadFile(state, benchFile("largest.mc")); }

void BM_LoadCatalogue(benchmark::State& state) { loadFile(state, benchFile("catalogue.mc")); }

const double kMegabyte = 1024.0 * 1024.0;

void report(benchmark::State& state, double bytes) {
    if (bytes < 0) {
        state.SkipWithError("the measurement failed");
        return;
    }
    state.counters["resident_MB"] = bytes / kMegabyte;
}

void BM_MemoryTqmsgLoad(benchmark::State& state) {
    benchMessages();  // read before the child starts, so not counted
    for (auto _ : state) {
        report(state, inChild([] {
                   if (!MessageModule::mlmap.msgmap.empty()) {
                       return -1.0;
                   }
                   long before = residentBytes();
                   try {
                       MessageModule module(benchFile("catalogue.mc"), false);
                   } catch (MessageTableParserException&) {
                       return -1.0;
                   }
                   return static_cast<double>(residentBytes() - before);
               }));
    }
}

void BM_MemoryGettextTouchAll(benchmark::State& state) {
    const auto& messages = benchMessages();
    for (auto _ : state) {
        report(state, inChild([&] {
                   long before = residentBytes();
                   if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) {
                       return -1.0;
                   }
                   bindtextdomain(kGettextDomain, benchFile("locale").c_str());
                   size_t translated = 0;
                   for (const BenchMessage& message : messages) {
                       const char* text = dgettext(kGettextDomain, message.english.c_str());
                       translated += text != message.english.c_str() ? 1 : 0;
                   }
                   if (translated != messages.size()) {
                       return -1.0;
                   }
                   return static_cast<double>(residentBytes() - before);
               }));
    }
}

}  // namespace

BENCHMARK(BM_LoadLargestCorpusFile)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_LoadCatalogue)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_MemoryTqmsgLoad)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemoryGettextTouchAll)->Iterations(1)->Unit(benchmark::kMillisecond);
