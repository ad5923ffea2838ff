#include "BenchData.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

std::string benchFile(const std::string& name) {
    const char* dir = std::getenv("TQMSG_BENCH_DATA");
    if (!dir) {
        std::fprintf(stderr, "TQMSG_BENCH_DATA is not set (bench/run.sh sets it)\n");
        std::abort();
    }
    return std::string(dir) + "/" + name;
}

const std::vector<BenchMessage>& benchMessages() {
    static const std::vector<BenchMessage> messages = [] {
        std::vector<BenchMessage> result;
        std::ifstream in(benchFile("catalogue.tsv"));
        std::string line;
        while (std::getline(in, line)) {
            std::istringstream fields(line);
            std::string id, inserts;
            BenchMessage message;
            std::getline(fields, id, '\t');
            std::getline(fields, inserts, '\t');
            std::getline(fields, message.english, '\t');
            std::getline(fields, message.german, '\t');
            message.id = static_cast<int>(static_cast<uint32_t>(std::stoul(id)));
            message.inserts = std::stoi(inserts);
            result.push_back(message);
        }
        return result;
    }();
    return messages;
}

const std::vector<int>& randomOrder() {
    static const std::vector<int> order = [] {
        std::mt19937 rng(42);
        std::uniform_int_distribution<int> pick(0, static_cast<int>(benchMessages().size()) - 1);
        std::vector<int> result(1 << 16);
        for (int& index : result) {
            index = pick(rng);
        }
        return result;
    }();
    return order;
}

long residentBytes() {
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    statm >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

double inChild(const std::function<double()>& body) {
    int channel[2];
    if (pipe(channel) != 0) {
        return -1;
    }
    std::fflush(nullptr);
    pid_t pid = fork();
    if (pid == 0) {
        close(channel[0]);
        double value = body();
        bool written = write(channel[1], &value, sizeof value) == sizeof value;
        _exit(written ? 0 : 1);
    }
    close(channel[1]);
    double value = -1;
    if (pid < 0 || read(channel[0], &value, sizeof value) != sizeof value) {
        value = -1;
    }
    close(channel[0]);
    int status = 0;
    if (pid > 0) {
        waitpid(pid, &status, 0);
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? value : -1;
}
