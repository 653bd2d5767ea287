#include "bench/Floor.h"

#include <QtGlobal>

Floor::Floor(const QByteArray &path)
{
    if (sqlite3_open(path.constData(), &m_connection) != SQLITE_OK)
        qFatal("%s: %s", path.constData(), sqlite3_errmsg(m_connection));
    run("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA cache_size = -16384");
}

Floor::~Floor() { sqlite3_close(m_connection); }

sqlite3_stmt *Floor::prepare(const QByteArray &sql)
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(m_connection, sql.constData(), int(sql.size()) + 1, &statement, nullptr) != SQLITE_OK)
        qFatal("%s\n%s", sqlite3_errmsg(m_connection), sql.constData());
    return statement;
}

void Floor::finish(sqlite3_stmt *statement)
{
    if (sqlite3_finalize(statement) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(m_connection));
}

int Floor::drain(const QByteArray &sql)
{
    int rows = 0;
    read(sql, [&](sqlite3_stmt *row) {
        ++rows;
        for (int column = 0; column < sqlite3_column_count(row); ++column) {
            if (sqlite3_column_type(row, column) == SQLITE_TEXT)
                sqlite3_column_text(row, column);
            else
                sqlite3_column_int64(row, column);
        }
    });
    return rows;
}

void Floor::run(const QByteArray &sql)
{
    if (sqlite3_exec(m_connection, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s\n%s", sqlite3_errmsg(m_connection), sql.left(200).constData());
}

int Floor::number(const QByteArray &sql)
{
    int result = 0;
    read(sql, [&](sqlite3_stmt *row) { result = sqlite3_column_int(row, 0); });
    return result;
}
