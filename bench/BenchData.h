// The benchmark catalogue that make_catalogue.py writes, and helpers shared by
// the benchmarks. The data directory comes from TQMSG_BENCH_DATA.
#ifndef TQMSG_BENCH_DATA_H
#define TQMSG_BENCH_DATA_H

#include <functional>
#include <string>
#include <vector>

struct BenchMessage {
    int id = 0;           // 32-bit message identifier
    int inserts = 0;      // 0 to 3
    std::string english;  // printf form; the gettext key
    std::string german;   // printf form; the translation
};

// $TQMSG_BENCH_DATA/<name>; aborts when the variable is unset.
std::string benchFile(const std::string& name);
// The catalogue's messages in file order (read once).
const std::vector<BenchMessage>& benchMessages();
// A fixed pseudo-random sequence of indexes into benchMessages().
const std::vector<int>& randomOrder();
// Resident memory of this process in bytes.
long residentBytes();
// Runs `body` in a forked child and returns the number it reports, or -1
// when the child fails. The store grows for the life of a process, so each
// load is measured in a process of its own.
double inChild(const std::function<double()>& body);

const char* const kGettextDomain = "tqbench";
const int kGerman = 0x407;

#endif  // TQMSG_BENCH_DATA_H
