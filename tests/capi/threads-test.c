/* Many threads formatting side by side, each with its own last error: run
 * under ThreadSanitizer by the TSan stage. */
#define _POSIX_C_SOURCE 200809L
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "capi-support.h"

#define THREADS 8
#define ROUNDS 2000

struct worker {
    int number;
    int wrong; /* calls whose result or last error was not the expected one */
};

/* Alternates a good call and a failing one, whose texts name the thread. */
static void* format_side_by_side(void* context) {
    struct worker* worker = context;
    char volume[32], expected[128], error[128], buf[128];
    uintptr_t args[3];
    int round;
    snprintf(volume, sizeof volume, "/vol%d", worker->number);
    snprintf(expected, sizeof expected, "Volume %s is full: %d bytes needed, 7 free.", volume,
             worker->number);
    snprintf(error, sizeof error, "Message with langId=0x409, msgId=0x%x not found",
             0x1000 + worker->number);
    args[0] = (uintptr_t)volume;
    args[1] = (uintptr_t)worker->number;
    args[2] = 7;
    for (round = 0; round < ROUNDS; ++round) {
        long length = round % 2 == 0
                          ? tqmsg_format(buf, sizeof buf, MSG_DISK_FULL, ENGLISH, volume,
                                         (unsigned long)worker->number, 7UL)
                          : tqmsg_format_array(buf, sizeof buf, MSG_DISK_FULL, ENGLISH, args, 3);
        if (length != (long)strlen(expected) || strcmp(buf, expected) != 0) ++worker->wrong;
        if (strcmp(tqmsg_last_error(), "") != 0) ++worker->wrong;
        if (tqmsg_format(buf, sizeof buf, 0x1000L + worker->number, ENGLISH) != -1) ++worker->wrong;
        if (strcmp(tqmsg_last_error(), error) != 0) ++worker->wrong;
    }
    return NULL;
}

static void threads_format_side_by_side(void) {
    pthread_t threads[THREADS];
    struct worker workers[THREADS];
    int i;
    load_catalogue();
    for (i = 0; i < THREADS; ++i) {
        workers[i].number = i;
        workers[i].wrong = 0;
        CHECK(pthread_create(&threads[i], NULL, format_side_by_side, &workers[i]) == 0,
              "thread %d starts", i);
    }
    for (i = 0; i < THREADS; ++i) {
        pthread_join(threads[i], NULL);
        CHECK(workers[i].wrong == 0, "thread %d: %d wrong results", i, workers[i].wrong);
    }
}

int main(int argc, char** argv) {
    static const struct scenario scenarios[] = {
        {"threads_format_side_by_side", threads_format_side_by_side},
    };
    return run_scenarios(argc, argv, scenarios, sizeof scenarios / sizeof scenarios[0]);
}
