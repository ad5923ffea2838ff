// Test support: run a scenario in a forked child process.
//
// The message store is process-wide and keeps every text for the life of the
// process, so each loading scenario runs in a fresh child. GoogleTest
// assertions inside the body work as usual: the child reports its failures on
// the shared output and exits non-zero, which fails the parent test.
#ifndef TQMSG_TESTS_FRESH_PROCESS_H
#define TQMSG_TESTS_FRESH_PROCESS_H

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

// Failed assertions recorded so far in the running test.
inline int failedParts() {
    const ::testing::TestResult* result =
        ::testing::UnitTest::GetInstance()->current_test_info()->result();
    int failed = 0;
    for (int i = 0; i < result->total_part_count(); ++i) {
        failed += result->GetTestPartResult(i).failed() ? 1 : 0;
    }
    return failed;
}

template <typename Body>
void inFreshProcess(Body body) {
    std::fflush(nullptr);  // std::cout is synchronised with stdio
    // The child inherits the failures of earlier scenarios: judge only its own.
    int failedBefore = failedParts();
    pid_t pid = fork();
    ASSERT_GE(pid, 0) << "fork failed";
    if (pid == 0) {
        body();
        std::fflush(nullptr);
        _exit(failedParts() > failedBefore ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "the scenario failed in its child process (status " << status << ")";
}

// A file in the working directory, written at construction and removed at
// destruction. The process id in its name keeps parallel test runs apart;
// use `path()` wherever the name matters (error texts carry it).
class TempFile {
public:
    TempFile(const std::string& name, const std::string& content)
        : path_("tqmsg_" + std::to_string(getpid()) + "_" + name) {
        std::ofstream(path_, std::ios::binary) << content;
    }
    ~TempFile() { std::remove(path_.c_str()); }
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

#endif  // TQMSG_TESTS_FRESH_PROCESS_H
