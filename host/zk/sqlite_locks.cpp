#include "zk/sqlite_locks.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <atomic>
#include <thread>

#include <sqlite3.h>

namespace zk::sqlite {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds DefaultPatience{30000};
constexpr milliseconds LongestPause{100};
constexpr milliseconds NoticeAfter{1000};

std::atomic<milliseconds::rep> patience = DefaultPatience.count();

std::function<void(const QString &)> & waitListener()
{
    static std::function<void(const QString &)> listener;
    return listener;
}

/// The pause before the try that follows `tries` ones: short at first, as most locks are.
milliseconds pauseAfter(int tries)
{
    return std::min(LongestPause, milliseconds(1 + 2 * std::min(tries, 100)));
}

/// All pauses before the try that follows `tries` ones.
milliseconds waitedBefore(int tries)
{
    milliseconds sum{0};
    constexpr int growing = 50; // from here on every pause is the longest
    for (int i = 0; i < std::min(tries, growing); ++i) {
        sum += pauseAfter(i);
    }
    return sum + std::max(0, tries - growing) * LongestPause;
}

int onBusy(void * connection, int tries)
{
    const milliseconds waited = waitedBefore(tries);
    if (waited >= lockPatience()) {
        return 0;
    }
    const milliseconds pause = pauseAfter(tries);
    if (waited < NoticeAfter && waited + pause >= NoticeAfter && waitListener()) {
        waitListener()(QString::fromUtf8(sqlite3_db_filename(static_cast<sqlite3 *>(connection), "main")));
    }
    std::this_thread::sleep_for(pause);
    return 1;
}

/// Whether the driver of the databases uses the very engine that this library is linked with: only then may
/// its handles be used here.
bool isEngineShared(const QSqlDatabase & open)
{
    static const bool isShared = [&open] {
        QSqlQuery query(QStringLiteral("SELECT sqlite_source_id()"), open);
        return query.next() && query.value(0).toString() == QLatin1String(sqlite3_sourceid());
    }();
    return isShared;
}

} // namespace

sqlite3 * handleOf(const QSqlDatabase & database)
{
    if (!database.isOpen() || !isEngineShared(database)) {
        return nullptr;
    }
    const QVariant handle = database.driver()->handle();
    return handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0
               ? *static_cast<sqlite3 * const *>(handle.constData())
               : nullptr;
}

milliseconds lockPatience()
{
    return milliseconds(patience.load());
}

void setLockPatience(milliseconds newPatience)
{
    patience = newPatience.count();
}

void setWaitListener(std::function<void(const QString & file)> listener)
{
    waitListener() = std::move(listener);
}

void waitForLocks(const QSqlDatabase & database)
{
    // Without a handle the engine waits by itself, as the connection asks it to, and says nothing.
    if (sqlite3 * const handle = handleOf(database)) {
        sqlite3_busy_handler(handle, onBusy, handle);
    }
}

int systemError(const QSqlDatabase & database)
{
    sqlite3 * const handle = handleOf(database);
    return handle ? sqlite3_system_errno(handle) : 0;
}

} // namespace zk::sqlite
