// tqmsg_report against sd_journal_send of the same entry, already formatted:
// what libtqmsg-journal adds to logging an event (formatting the message and
// its inserts, building the fields, checking for the journal socket).
//
// Run inside a private mount namespace by bench/journal-run.sh: against a live
// systemd-journald, or (TQMSG_BENCH_SINK=1) against a socket of this process
// at journald's path that a thread drains, which measures the sender alone.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

#include "tqmsg-journal.h"

namespace {

constexpr long MSG_DISK_FULL = 0xC1010010L;
constexpr long ENGLISH = 0x409;
constexpr const char* BASE = "0123456789abcdef0123456789abcdef";

// A datagram socket at journald's path with a thread that reads and drops
// every entry, so that senders never wait for a journal.
void startSink() {
    int sink = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/run/systemd/journal/socket");
    int size = 8 << 20;
    setsockopt(sink, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    if (sink < 0 || bind(sink, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        std::perror("journal sink");
        std::exit(1);
    }
    std::thread([sink] {
        static char datagram[1 << 17];
        while (recv(sink, datagram, sizeof datagram, 0) >= 0) {
        }
    }).detach();
}

void setUp() {
    static bool done = false;
    if (done) return;
    done = true;
    const char* sink = std::getenv("TQMSG_BENCH_SINK");
    if (sink != nullptr && *sink == '1') {
        mkdir("/run/systemd", 0755);
        mkdir("/run/systemd/journal", 0755);
        startSink();
    }
    if (tqmsg_load(TQMSG_BENCH_EVENTS) != 0 || tqmsg_journal_open("tqmsg-bench", BASE) != 0) {
        std::fprintf(stderr, "tqmsg_journal_bench: %s\n", tqmsg_last_error());
        std::exit(1);
    }
}

void BM_TqmsgReport(benchmark::State& state) {
    setUp();
    for (auto _ : state) {
        benchmark::DoNotOptimize(tqmsg_report(MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL));
    }
}
BENCHMARK(BM_TqmsgReport);

// The entry tqmsg_report sends, every field written in by hand, as a program
// gluing tqmsg_format and libsystemd together would send it.
void BM_SdJournalSend(benchmark::State& state) {
    setUp();
    char text[256];
    tqmsg_format(text, sizeof text, MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL);
    for (auto _ : state) {
        benchmark::DoNotOptimize(sd_journal_send(
            "MESSAGE=%s", text, "PRIORITY=%d", 3, "MESSAGE_ID=%s",
            "0123456789abcdef01234567c1010010", "SYSLOG_IDENTIFIER=%s", "tqmsg-bench",
            "TQMSG_ID=%s", "0xC1010010", "TQMSG_SYMBOL=%s", "MSG_DISK_FULL", "TQMSG_LANGUAGE=%s",
            "0x409", "TQMSG_INSERT_1=%s", "/srv", "TQMSG_INSERT_2=%s", "1048576", nullptr));
    }
}
BENCHMARK(BM_SdJournalSend);

// What the library does besides sending: formatting the text and the
// inserts (for reading the two figures above).
void BM_FormatWithInserts(benchmark::State& state) {
    setUp();
    char text[1024];
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            tqmsg_format(text, sizeof text, MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL));
    }
}
BENCHMARK(BM_FormatWithInserts);

}  // namespace
