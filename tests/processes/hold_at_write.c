/*
 * Loaded before the C library, holds the program (SIGSTOP) once, before its first write to a file whose path
 * contains KORVANE_HOLD_AT: the test finds it in the middle of its work, however slow or quick the machine
 * is.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

static void hold_at(int file)
{
    static int was_held;
    char link[64];
    char path[4096];
    const char * const wanted = getenv("KORVANE_HOLD_AT");
    if (was_held || !wanted) {
        return;
    }
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length > 0) {
        path[length] = '\0';
        if (strstr(path, wanted)) {
            was_held = 1;
            raise(SIGSTOP);
        }
    }
}

ssize_t write(int file, const void * buffer, size_t size)
{
    hold_at(file);
    return ((__typeof__(&write))dlsym(RTLD_NEXT, "write"))(file, buffer, size);
}

ssize_t pwrite64(int file, const void * buffer, size_t size, off64_t at)
{
    hold_at(file);
    return ((__typeof__(&pwrite64))dlsym(RTLD_NEXT, "pwrite64"))(file, buffer, size, at);
}
