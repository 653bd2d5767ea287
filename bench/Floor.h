#pragma once

#include <QByteArray>

#include <sqlite3.h>

/// The plain SQLite C API on a file of its own connection, with the settings that the engine gives its own. Each
/// statement is prepared as it is issued, with its values in the text, run, and thrown away.
class Floor
{
public:
    explicit Floor(const QByteArray &path);
    ~Floor();
    Q_DISABLE_COPY_MOVE(Floor)

    /// Calls `use` with the statement standing on each row.
    template<typename Use>
    void read(const QByteArray &sql, Use use)
    {
        sqlite3_stmt *statement = prepare(sql);
        while (sqlite3_step(statement) == SQLITE_ROW)
            use(statement);
        finish(statement);
    }
    /// Fetches every field of every row. @returns the number of rows.
    int drain(const QByteArray &sql);
    void run(const QByteArray &sql);
    /// The one number that a statement gives.
    int number(const QByteArray &sql);

private:
    sqlite3_stmt *prepare(const QByteArray &sql);
    void finish(sqlite3_stmt *statement);

    sqlite3 *m_connection = nullptr;
};
