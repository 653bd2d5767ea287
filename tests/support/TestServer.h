#pragma once

#include <QString>
#include <QTest>

#include <libpq-fe.h>

#include <memory>
#include <vector>

/// A connection to the throw-away server on which a test runs as NAME.server: see scripts/test_server.
class TestServer
{
public:
    TestServer()
    {
        const QByteArrayList place = qgetenv("VORLANE_TEST_SERVER").split(':');
        const QByteArray target =
            "host=" + place.value(0) + " port=" + place.value(1) + " user=postgres dbname=postgres";
        m_connection.reset(PQconnectdb(target.constData()));
        if (PQstatus(m_connection.get()) != CONNECTION_OK)
            qFatal("%s", PQerrorMessage(m_connection.get()));
    }

    /// The rows of one statement, all values as texts, a null as a null text; or one row with the five characters of
    /// its error.
    std::vector<QStringList> run(const QString &sql, const QString &parameter = {})
    {
        const QByteArray text = parameter.toUtf8();
        const char *const values[] = {text.constData()};
        const std::unique_ptr<PGresult, decltype(&PQclear)> result(
            PQexecParams(m_connection.get(), sql.toUtf8().constData(), parameter.isNull() ? 0 : 1, nullptr, values,
                         nullptr, nullptr, 0),
            PQclear);
        if (const char *code = PQresultErrorField(result.get(), PG_DIAG_SQLSTATE))
            return {{QString::fromUtf8(code)}};
        std::vector<QStringList> rows(PQntuples(result.get()));
        for (int row = 0; row < PQntuples(result.get()); ++row)
            for (int column = 0; column < PQnfields(result.get()); ++column)
                rows[row].append(PQgetisnull(result.get(), row, column)
                                     ? QString()
                                     : QString::fromUtf8(PQgetvalue(result.get(), row, column)));
        return rows;
    }

private:
    std::unique_ptr<PGconn, decltype(&PQfinish)> m_connection{nullptr, PQfinish};
};
