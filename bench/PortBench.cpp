// Porting: milliseconds and MB/s for converting, with `tqmsg port`'s converter
// and writer, the largest real message file as written for Windows
// ("largest-windows.mc": no SymbolicName lines, CR LF) and the generated
// catalogue, to set beside loading them (LoadBench); and a message whose first
// text line is 10 MB of "language ", a header keyword that every repeat makes
// the writer break, which shows the time growing in proportion to the line
// (a search from the start after each break once made it quadratic). Each run
// decodes, reads, resolves, names, rewrites the texts and writes the whole
// converted file into memory.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "BenchData.h"
#include "PortConverter.h"

namespace {

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Seconds for one conversion, or -1 when the file does not convert.
double timePort(const std::string& bytes, const std::string& path) {
    auto start = std::chrono::steady_clock::now();
    PortReport report;
    try {
        PortResult result = portMessageFile(bytes, path, PortOptions(), report);
        std::ostringstream converted;
        writeMessageFile(converted, result.content);
        benchmark::DoNotOptimize(converted.tellp());
    } catch (const PortError& error) {
        std::fprintf(stderr, "%s\n", describeError(path, error).c_str());
        return -1.0;
    }
    std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count();
}

// Measured as the loads are, in a child process of its own with a fresh heap.
void portBytes(benchmark::State& state, const std::string& bytes, const std::string& path) {
    for (auto _ : state) {
        double seconds = inChild([&] { return timePort(bytes, path); });
        if (seconds < 0) {
            state.SkipWithError("the conversion failed");
            return;
        }
        state.SetIterationTime(seconds);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes.size()));
}

void portFile(benchmark::State& state, const std::string& path) {
    portBytes(state, readBytes(path), path);
}

// One message whose first text line holds `word` until it is `size` bytes long.
std::string longFirstLine(const std::string& word, size_t size) {
    std::string bytes = "MessageId=1\r\nSymbolicName=MSG_LONG\r\nLanguage=English\r\n";
    bytes.reserve(bytes.size() + size + word.size() + 8);
    for (size_t length = 0; length < size; length += word.size()) bytes += word;
    return bytes + "\r\n.\r\n";
}

void BM_PortLongKeywordLine(benchmark::State& state) {
    portBytes(state, longFirstLine("language ", 10 * 1000 * 1000), "long-line.mc");
}

void BM_PortLargestCorpusFile(benchmark::State& state) {
    portFile(state, benchFile("largest-windows.mc"));
}

void BM_PortCatalogue(benchmark::State& state) { portFile(state, benchFile("catalogue.mc")); }

}  // namespace

BENCHMARK(BM_PortLargestCorpusFile)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_PortCatalogue)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_PortLongKeywordLine)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
