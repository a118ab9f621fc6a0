/*
 * Loaded before the C library, lets one chosen call fail that touches a file below a chosen folder.
 *
 *   KORVANE_FAULT_FOLDER   the folder; calls on other files, on pipes and on the program itself are not
 * counted KORVANE_FAULT_AT       number of the call, counted from 1; absent or 0: none fails
 *   KORVANE_FAULT_KIND     fail: an input or output error; short: half of the bytes; full: no space, for
 * calls that write; from: an input or output error in this call and all later ones KORVANE_FAULT_COUNT file
 * that receives the number of calls when the process ends KORVANE_FAULT_NAMES    file that receives the name
 * of each call, a line each
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

enum
{
    most_files = 4096
};

static char is_ours[most_files];
static const char * folder;
static size_t folder_length;
static long chosen;
static char kind; /* first letter, and 'F' for full */
static long count;
static int names = -1;

#define REAL(name) ((__typeof__(&name))real_of(#name))

static void * real_of(const char * name)
{
    return dlsym(RTLD_NEXT, name);
}

__attribute__((constructor)) static void begin(void)
{
    folder = getenv("KORVANE_FAULT_FOLDER");
    folder_length = folder ? strlen(folder) : 0;
    const char * const at = getenv("KORVANE_FAULT_AT");
    chosen = at ? atol(at) : 0;
    const char * const given = getenv("KORVANE_FAULT_KIND");
    kind = given ? (strcmp(given, "full") == 0 ? 'F' : strcmp(given, "from") == 0 ? '>' : given[0]) : 0;
    const char * const list = getenv("KORVANE_FAULT_NAMES");
    if (list) {
        names = REAL(open)(list, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    }
    /* A program that this one starts is not part of what is tried. */
    unsetenv("LD_PRELOAD");
}

__attribute__((destructor)) static void end(void)
{
    const char * const file = getenv("KORVANE_FAULT_COUNT");
    if (file) {
        char text[32];
        const int length = snprintf(text, sizeof text, "%ld\n", count);
        const int out = REAL(open)(file, O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (out >= 0) {
            (void)!REAL(write)(out, text, (size_t)length);
        }
    }
}

static int path_is_ours(const char * path)
{
    return folder && path && strncmp(path, folder, folder_length) == 0;
}

static int file_is_ours(int file)
{
    return file >= 0 && file < most_files && is_ours[file];
}

/* What happens to the call that asks: 0 nothing, 1 it fails with errno set, 2 it is cut short. */
static int fate(const char * name, int writes)
{
    ++count;
    if (names >= 0) {
        char line[64];
        const int length = snprintf(line, sizeof line, "%ld %s\n", count, name);
        (void)!REAL(write)(names, line, (size_t)length);
    }
    if (chosen == 0 || (kind == '>' ? count < chosen : count != chosen)) {
        return 0;
    }
    if (kind == 's') {
        return 2;
    }
    if (kind == 'F' && !writes) {
        return 0;
    }
    errno = kind == 'F' ? ENOSPC : EIO;
    return 1;
}

static int opened(int file, const char * path)
{
    if (file >= 0 && file < most_files) {
        is_ours[file] = (char)path_is_ours(path);
    }
    return file;
}

#define OPEN(name)                                                                                           \
    int name(const char * path, int flags, ...)                                                              \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(rest, mode_t) : 0;                      \
        va_end(rest);                                                                                        \
        if (path_is_ours(path) && fate(#name, flags & O_CREAT) == 1) {                                       \
            return -1;                                                                                       \
        }                                                                                                    \
        return opened(REAL(name)(path, flags, mode), path);                                                  \
    }
OPEN(open)
OPEN(open64)

#define OPENAT(name)                                                                                         \
    int name(int where, const char * path, int flags, ...)                                                   \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(rest, mode_t) : 0;                      \
        va_end(rest);                                                                                        \
        if (path_is_ours(path) && fate(#name, flags & O_CREAT) == 1) {                                       \
            return -1;                                                                                       \
        }                                                                                                    \
        return opened(REAL(name)(where, path, flags, mode), path);                                           \
    }
OPENAT(openat)
OPENAT(openat64)

#define TRANSFER(name, buffer, writes, places, values)                                                       \
    ssize_t name places                                                                                      \
    {                                                                                                        \
        if (file_is_ours(file)) {                                                                            \
            const int what = fate(#name, writes);                                                            \
            if (what == 1) {                                                                                 \
                return -1;                                                                                   \
            }                                                                                                \
            if (what == 2) {                                                                                 \
                size /= 2;                                                                                   \
            }                                                                                                \
        }                                                                                                    \
        return REAL(name) values;                                                                            \
    }
TRANSFER(read, buffer, 0, (int file, void * buffer, size_t size), (file, buffer, size))
TRANSFER(pread, buffer, 0, (int file, void * buffer, size_t size, off_t at), (file, buffer, size, at))
TRANSFER(pread64, buffer, 0, (int file, void * buffer, size_t size, off64_t at), (file, buffer, size, at))
TRANSFER(write, buffer, 1, (int file, const void * buffer, size_t size), (file, buffer, size))
TRANSFER(pwrite, buffer, 1, (int file, const void * buffer, size_t size, off_t at), (file, buffer, size, at))
TRANSFER(pwrite64, buffer, 1, (int file, const void * buffer, size_t size, off64_t at),
         (file, buffer, size, at))

#define ON_FILE(type, name, writes, places, values)                                                          \
    type name places                                                                                         \
    {                                                                                                        \
        if (file_is_ours(file) && fate(#name, writes) == 1) {                                                \
            return -1;                                                                                       \
        }                                                                                                    \
        return REAL(name) values;                                                                            \
    }
ON_FILE(int, fsync, 1, (int file), (file))
ON_FILE(int, fdatasync, 1, (int file), (file))
ON_FILE(int, ftruncate, 1, (int file, off_t size), (file, size))
ON_FILE(int, ftruncate64, 1, (int file, off64_t size), (file, size))
ON_FILE(int, fstat, 0, (int file, struct stat * what), (file, what))
ON_FILE(int, fstat64, 0, (int file, struct stat64 * what), (file, what))
ON_FILE(int, fchmod, 1, (int file, mode_t mode), (file, mode))
ON_FILE(int, fchown, 1, (int file, uid_t user, gid_t group), (file, user, group))
ON_FILE(off_t, lseek, 0, (int file, off_t at, int whence), (file, at, whence))
ON_FILE(off64_t, lseek64, 0, (int file, off64_t at, int whence), (file, at, whence))

/* The file is closed whatever the call says. */
int close(int file)
{
    const int ours = file_is_ours(file);
    if (ours) {
        is_ours[file] = 0;
    }
    const int what = ours ? fate("close", 0) : 0;
    const int reason = errno;
    const int done = REAL(close)(file);
    if (what == 1) {
        errno = reason;
        return -1;
    }
    return done;
}

/* Only the calls that lock. */
#define LOCK(name)                                                                                           \
    int name(int file, int what, ...)                                                                        \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, what);                                                                                \
        void * const value = va_arg(rest, void *);                                                           \
        va_end(rest);                                                                                        \
        if (file_is_ours(file) && (what == F_SETLK || what == F_SETLKW) && fate(#name, 0) == 1) {            \
            return -1;                                                                                       \
        }                                                                                                    \
        return REAL(name)(file, what, value);                                                                \
    }
LOCK(fcntl)
LOCK(fcntl64)

#define ON_PATH(name, writes, places, values)                                                                \
    int name places                                                                                          \
    {                                                                                                        \
        if (path_is_ours(path) && fate(#name, writes) == 1) {                                                \
            return -1;                                                                                       \
        }                                                                                                    \
        return REAL(name) values;                                                                            \
    }
ON_PATH(stat, 0, (const char * path, struct stat * what), (path, what))
ON_PATH(stat64, 0, (const char * path, struct stat64 * what), (path, what))
ON_PATH(lstat, 0, (const char * path, struct stat * what), (path, what))
ON_PATH(lstat64, 0, (const char * path, struct stat64 * what), (path, what))
ON_PATH(statx, 0, (int where, const char * path, int flags, unsigned mask, struct statx * what),
        (where, path, flags, mask, what))
ON_PATH(access, 0, (const char * path, int mode), (path, mode))
ON_PATH(unlink, 0, (const char * path), (path))
ON_PATH(rmdir, 0, (const char * path), (path))
ON_PATH(mkdir, 1, (const char * path, mode_t mode), (path, mode))
ON_PATH(chmod, 1, (const char * path, mode_t mode), (path, mode))
ON_PATH(rename, 1, (const char * path, const char * to), (path, to))
ON_PATH(renameat2, 1, (int from, const char * path, int where, const char * to, unsigned flags),
        (from, path, where, to, flags))
ON_PATH(link, 1, (const char * path, const char * to), (path, to))
