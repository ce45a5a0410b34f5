/* Another process on the store, as the enforcement components are: `store_holder read|write PATH` opens
 * the store, takes a read lock (a read inside an open transaction) or the write lock (BEGIN IMMEDIATE),
 * prints "ready" and keeps the lock until its standard input ends. Exit status 1 when the lock could not
 * be taken. */
#include <sqlite3.h>
#include <stdio.h>
#include <string.h>

int main(int argc, char** argv) {
    if (argc != 3 || (strcmp(argv[1], "read") != 0 && strcmp(argv[1], "write") != 0)) {
        fprintf(stderr, "usage: store_holder read|write PATH\n");
        return 2;
    }
    sqlite3* db = NULL;
    if (sqlite3_open_v2(argv[2], &db, SQLITE_OPEN_READWRITE, NULL) != SQLITE_OK) {
        fprintf(stderr, "store_holder: %s\n", sqlite3_errmsg(db));
        sqlite3_close(db);
        return 1;
    }
    const char* lock =
        strcmp(argv[1], "read") == 0 ? "BEGIN; SELECT COUNT(*) FROM sqlite_master;" : "BEGIN IMMEDIATE;";
    if (sqlite3_exec(db, lock, NULL, NULL, NULL) != SQLITE_OK) {
        fprintf(stderr, "store_holder: %s\n", sqlite3_errmsg(db));
        sqlite3_close(db);
        return 1;
    }
    printf("ready\n");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    sqlite3_exec(db, "ROLLBACK", NULL, NULL, NULL);
    sqlite3_close(db);
    return 0;
}
