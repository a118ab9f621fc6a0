/* The least that an export has to do: reads every row of the model's tables from a project file through
 * SQLite's C interface, touching every value, and writes a given number of bytes with write(2).
 *
 * usage: floor PROJECT.korv BYTES OUTPUT */

#include <fcntl.h>
#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static unsigned long long touched;

static int readTable(sqlite3 * db, const char * table)
{
    char * const sql = sqlite3_mprintf("SELECT * FROM \"%w\"", table);
    sqlite3_stmt * rows = NULL;
    int status = sqlite3_prepare_v2(db, sql, -1, &rows, NULL);
    sqlite3_free(sql);
    if (status != SQLITE_OK) {
        return status;
    }
    const int columns = sqlite3_column_count(rows);
    while ((status = sqlite3_step(rows)) == SQLITE_ROW) {
        for (int c = 0; c < columns; ++c) {
            if (sqlite3_column_type(rows, c) == SQLITE_INTEGER) {
                touched += (unsigned long long)sqlite3_column_int64(rows, c);
            } else if (sqlite3_column_text(rows, c) != NULL) {
                touched += (unsigned long long)sqlite3_column_bytes(rows, c);
            }
        }
    }
    sqlite3_finalize(rows);
    return status == SQLITE_DONE ? SQLITE_OK : status;
}

static int readModel(sqlite3 * db)
{
    sqlite3_stmt * tables = NULL;
    int status = sqlite3_prepare_v2(db,
                                    "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT IN "
                                    "('t_plugin_params', 't_project_historic') AND name NOT LIKE 'sqlite_%'",
                                    -1, &tables, NULL);
    while (status == SQLITE_OK && sqlite3_step(tables) == SQLITE_ROW) {
        status = readTable(db, (const char *)sqlite3_column_text(tables, 0));
    }
    sqlite3_finalize(tables);
    return status;
}

static int writeBytes(const char * file, long long bytes)
{
    static char block[1 << 16];
    memset(block, 'x', sizeof block);
    const int fd = open(file, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0) {
        return -1;
    }
    while (bytes > 0) {
        const size_t part = bytes < (long long)sizeof block ? (size_t)bytes : sizeof block;
        const ssize_t written = write(fd, block, part);
        if (written <= 0) {
            close(fd);
            return -1;
        }
        bytes -= written;
    }
    return close(fd);
}

int main(int argc, char ** argv)
{
    if (argc != 4) {
        fprintf(stderr, "usage: floor PROJECT.korv BYTES OUTPUT\n");
        return 2;
    }
    sqlite3 * db = NULL;
    if (sqlite3_open_v2(argv[1], &db, SQLITE_OPEN_READONLY, NULL) != SQLITE_OK ||
        readModel(db) != SQLITE_OK) {
        fprintf(stderr, "%s: %s\n", argv[1], sqlite3_errmsg(db));
        return 1;
    }
    sqlite3_close(db);
    if (writeBytes(argv[3], atoll(argv[2])) != 0) {
        perror(argv[3]);
        return 1;
    }
    printf("%llu\n", touched);
    return 0;
}
