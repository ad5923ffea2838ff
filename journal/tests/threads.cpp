// Sends events from C++, from 8 threads side by side, through
// libtqmsg-journal:  threads FILE BASE COUNT
// Each thread reports COUNT events numbered by thread and sequence, for
// check-entries.py `threads` to find each exactly once and whole.
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "tqmsg-journal.h"

namespace {

constexpr long MSG_JOB_DONE = 0x01010012L;
constexpr long ENGLISH = 0x409L;
constexpr int THREADS = 8;

int reportJobs(int thread, int count) {
    int failures = 0;
    std::string job = "thread-" + std::to_string(thread);
    for (int i = 0; i < count; ++i) {
        std::string result = "event " + std::to_string(i);
        failures += tqmsg_report(MSG_JOB_DONE, ENGLISH, job.c_str(), result.c_str()) != 0;
    }
    return failures;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: threads FILE BASE COUNT\n";
        return 2;
    }
    if (tqmsg_load(argv[1]) != 0 || tqmsg_journal_open("tqmsg-test", argv[2]) != 0) {
        std::cerr << "threads: " << tqmsg_last_error() << '\n';
        return 1;
    }
    int count = std::atoi(argv[3]);
    std::vector<int> failures(THREADS);
    std::vector<std::thread> threads;
    for (int t = 0; t < THREADS; ++t) {
        threads.emplace_back([&failures, t, count] { failures[t] = reportJobs(t, count); });
    }
    for (auto& thread : threads) thread.join();
    for (int f : failures) {
        if (f != 0) return 1;
    }
    return 0;
}
