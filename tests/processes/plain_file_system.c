/*
 * Loaded before the C library, takes from a program what not every file system can do.
 *
 *   KORVANE_TAKEN_AWAY   rename: names are given only in place of what has them;
 *                        links: that, and a file has one name only
 */
#define _GNU_SOURCE
#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int lacks(const char * what)
{
    const char * const taken = getenv("KORVANE_TAKEN_AWAY");
    return taken && (strcmp(taken, what) == 0 || strcmp(taken, "links") == 0);
}

int renameat2(int from_folder, const char * from, int to_folder, const char * to, unsigned flags)
{
    (void)from_folder, (void)from, (void)to_folder, (void)to, (void)flags;
    errno = EINVAL;
    return -1;
}

int link(const char * from, const char * to)
{
    if (!lacks("links")) {
        return linkat(-100 /* the current folder */, from, -100, to, 0);
    }
    errno = EPERM;
    return -1;
}
